#include "frame/result_file.h"

#include "text/statement.h"

namespace veltrin {

void saveResult(Program& program, const ResultName& name, const std::string& text) {
  Files& files = program.platform.files;
  program.ResultFolder = program.programFolder;
  if (program.UseTempFolder == 1) {
    skip([&] { files.CreateFolder("c:\\Temp"); });
    skip([&] { files.CreateFolder("c:\\Temp\\Veltrin"); });
    program.ResultFolder = "c:\\temp\\veltrin";
  }
  const DateTime now = program.platform.clock.now();
  const std::string file = name.namePart + name.destination + "_" + Format(now, "ddmmmyyyy") + "_" +
                           Format(now, "hhmm") + ".txt";
  program.ResultFile = program.ResultFolder + file;
  program.ResultStream.reset();
  skip([&] {
    program.ResultStream = files.OpenTextFile(program.ResultFolder, file, FileMode::Writing, true);
  });
  if (program.ResultStream) {
    skip([&] { program.ResultStream->Write(text); });
    skip([&] { program.ResultStream->Close(); });
    program.ResultStream.reset();
  }
  program.MsgBox(name.message + files.native(program.ResultFile), kMessageOk, name.title);
}

}  // namespace veltrin
