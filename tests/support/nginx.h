// SPDX-License-Identifier: GPL-3.0-or-later
// A real web server, on the loopback of this machine.
#pragma once

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <netinet/in.h>
#include <signal.h>
#include <string>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace veltrin {

// The server nginx with a configuration of its own, which serves the files of a folder at a
// free port until this object goes. It runs as one process in the foreground, logs into the
// folder and has nothing to do with a server that this machine may run.
class Nginx {
 public:
  // Whether this machine has one.
  static bool isThere() { return access(kProgram, X_OK) == 0; }

  // `directives` are of the server block. With `certificate`, a folder with the files
  // cert.pem and key.pem, there is a second port for https.
  explicit Nginx(std::filesystem::path folder, std::string directives = {},
                 std::filesystem::path certificate = {})
      : folder_(std::move(folder)),
        directives_(std::move(directives)),
        certificate_(std::move(certificate)) {
    // A port may be taken between the look at it and the server's start.
    for (int attempt = 0; attempt < 5 && !isRunning(); ++attempt) start();
  }
  ~Nginx() { stop(); }
  Nginx(const Nginx&) = delete;
  Nginx& operator=(const Nginx&) = delete;

  // Whether it answers; if not, error.log in the folder says why.
  bool isRunning() const { return process_ > 0; }

  std::string url(const std::string& path) const {
    return "http://127.0.0.1:" + std::to_string(port_) + path;
  }
  std::string secureUrl(const std::string& path) const {
    return "https://127.0.0.1:" + std::to_string(securePort_) + path;
  }
  std::uint16_t port() const { return port_; }
  std::uint16_t securePort() const { return securePort_; }

 private:
  // Debian's place, which is not in everybody's PATH.
  static constexpr const char* kProgram = "/usr/sbin/nginx";

  static sockaddr_in loopback(std::uint16_t port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
  }

  static std::uint16_t freePort() {
    const int probe = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address = loopback(0);
    socklen_t size = sizeof address;
    const bool isBound = bind(probe, reinterpret_cast<sockaddr*>(&address), size) == 0 &&
                         getsockname(probe, reinterpret_cast<sockaddr*>(&address), &size) == 0;
    close(probe);
    return isBound ? ntohs(address.sin_port) : 0;
  }

  static bool answers(std::uint16_t port) {
    const int caller = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_in address = loopback(port);
    const int result = connect(caller, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    close(caller);
    return result == 0;
  }

  void configure() const {
    const std::string folder = folder_.string();
    std::ofstream file(folder_ / "nginx.conf");
    file << "daemon off;\nmaster_process off;\npid \"" << folder << "/nginx.pid\";\n"
         << "events { worker_connections 64; }\nhttp {\n"
         << "  access_log off;\n  sendfile on;\n  default_type application/octet-stream;\n";
    for (const char* use : {"client_body", "proxy", "fastcgi", "uwsgi", "scgi"}) {
      file << "  " << use << "_temp_path \"" << folder << "/temp\";\n";
    }
    file << "  server {\n    listen 127.0.0.1:" << port_ << ";\n";
    if (!certificate_.empty()) {
      file << "    listen 127.0.0.1:" << securePort_ << " ssl;\n    ssl_certificate \""
           << certificate_.string() << "/cert.pem\";\n    ssl_certificate_key \""
           << certificate_.string() << "/key.pem\";\n";
    }
    file << "    root \"" << folder << "\";\n" << directives_ << "\n  }\n}\n";
  }

  void start() {
    port_ = freePort();
    do securePort_ = freePort();
    while (securePort_ == port_);
    configure();
    const std::string log = (folder_ / "error.log").string();
    const std::string configuration = (folder_ / "nginx.conf").string();
    process_ = fork();
    if (process_ == 0) {
      prctl(PR_SET_PDEATHSIG, SIGKILL);
      execl(kProgram, kProgram, "-e", log.c_str(), "-c", configuration.c_str(), nullptr);
      _exit(127);
    }
    for (int wait = 0; wait < 2000; ++wait) {
      if (waitpid(process_, nullptr, WNOHANG) != 0) break;
      if (answers(port_)) return;
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    stop();
  }

  void stop() {
    if (process_ > 0) {
      kill(process_, SIGKILL);
      waitpid(process_, nullptr, 0);
    }
    process_ = -1;
  }

  std::filesystem::path folder_;
  std::string directives_;
  std::filesystem::path certificate_;
  std::uint16_t port_ = 0;
  std::uint16_t securePort_ = 0;
  pid_t process_ = -1;
};

}  // namespace veltrin
