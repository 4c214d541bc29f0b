#include "frame/result_file.h"

#include "text/statement.h"

namespace veltrin {

void saveResult(Program& program, const ResultName& name, const std::string& text) {
  Files& files = program.platform.files;
  auto& result = program.shared<ResultValues>();
  result.ResultFolder = program.programFolder;
  if (result.UseTempFolder == 1) {
    skip([&] { files.CreateFolder("c:\\Temp"); });
    skip([&] { files.CreateFolder("c:\\Temp\\Veltrin"); });
    result.ResultFolder = "c:\\temp\\veltrin";
  }
  const DateTime now = program.platform.clock.now();
  const std::string file = name.namePart + name.destination + "_" + Format(now, "ddmmmyyyy") + "_" +
                           Format(now, "hhmm") + ".txt";
  result.ResultFile = result.ResultFolder + file;
  skip([&] {
    result.ResultStream = files.OpenTextFile(result.ResultFolder, file, FileMode::Writing, true);
  });
  if (result.ResultStream) {
    skip([&] { result.ResultStream->Write(text); });
    skip([&] { result.ResultStream->Close(); });
    result.ResultStream.reset();
  }
  program.MsgBox(name.message + files.native(result.ResultFile), kMessageOk, name.title);
}

}  // namespace veltrin
