// SPDX-License-Identifier: GPL-3.0-or-later
#include "sysinfo/report_pictures.h"

namespace veltrin {

const std::array<ReportPicture, 38> kReportPictures{{
    {"report-processor", "Processor"},                   // 1
    {"report-user", "Users and events"},                 // 2
    {"report-folder", "Folder"},                         // 3
    {"report-video-card", "Video card"},                 // 4
    {"report-warning", "Warning"},                       // 5
    {"report-network-card", "Network card"},             // 6
    {"report-ram-drive", "RAM drive"},                   // 7
    {"report-optical-drive", "Optical drive"},           // 8
    {"report-cache", "Cache"},                           // 9
    {"report-desktop", "Desktop"},                       // 10
    {"report-file", "File"},                             // 11
    {"report-clock", "Clock"},                           // 12
    {"report-process", "Running processes"},             // 13
    {"report-network-drive", "Network or other drive"},  // 14
    {"report-hard-drive", "Hard drive"},                 // 15
    {"report-floppy-drive", "Floppy drive"},             // 16
    {"report-removable-drive", "Removable drive"},       // 17
    {"report-tape-drive", "Tape drive"},                 // 18
    {"report-keyboard", "Keyboard"},                     // 19
    {"report-board", "Circuit board"},                   // 20
    {"report-memory", "Memory"},                         // 21
    {"report-modem", "Modem"},                           // 22
    {"report-monitor", "Monitor"},                       // 23
    {"report-mouse", "Mouse"},                           // 24
    {"report-network", "Network"},                       // 25
    {"report-operating-system", "Operating system"},     // 26
    {"report-parallel-port", "Printer port"},            // 27
    {"report-power", "Power"},                           // 28
    {"report-printer", "Printer"},                       // 29
    {"report-scanner", "Scanner"},                       // 30
    {"report-serial-port", "Serial port"},               // 31
    {"report-service", "Service"},                       // 32
    {"report-sound", "Sound"},                           // 33
    {"report-usb", "USB"},                               // 34
    {"report-computer", "Computer"},                     // 35
    {"report-program", "Programs"},                      // 36
    {"report-camera", "Camera"},                         // 37
    {"report-tool", "Tools"},                            // 38
}};

}  // namespace veltrin
