// SPDX-License-Identifier: GPL-3.0-or-later
// The headers of others that most tests of the windows need, compiled once. A test still
// includes what it uses.
#pragma once

#include <QApplication>
#include <QCoreApplication>
#include <QEvent>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QString>
#include <QTimer>
#include <QWidget>
#include <QWindow>
#include <QtTest/QTest>

#include "runner/test_headers.h"
