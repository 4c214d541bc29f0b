// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/result_file.h"

#include "text/statement.h"

namespace veltrin {

void writeFile(Files& files, std::unique_ptr<TextStream>& stream, const std::string& folder,
               const std::string& name, FileMode mode, const std::string& text) {
  skip([&] { stream = files.OpenTextFile(folder, name, mode, true); });
  if (!stream) return;
  skip([&] { stream->Write(text); });
  skip([&] { stream->Close(); });
  stream.reset();
}

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
  writeFile(files, result.ResultStream, result.ResultFolder, file, FileMode::Writing, text);
  program.MsgBox(name.message + files.native(result.ResultFile), kMessageOk, name.title);
}

}  // namespace veltrin
