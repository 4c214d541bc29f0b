// SPDX-License-Identifier: GPL-3.0-or-later
// Prints the names of the printers and ends, as a program would that has shown them.
#include <cstdio>

#include <QCoreApplication>

#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_printers.h"

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  veltrin::QtEventLoop events;
  veltrin::QtPrinters printers(events);
  for (const std::string& name : printers.deviceNames()) std::printf("%s\n", name.c_str());
  return 0;
}
