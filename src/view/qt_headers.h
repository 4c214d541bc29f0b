// SPDX-License-Identifier: GPL-3.0-or-later
// The headers that most files of the view need, compiled once.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <QApplication>
#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QString>
#include <QTimer>
#include <QWidget>
#include <QWindow>
