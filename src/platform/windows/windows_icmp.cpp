#include "platform/windows/windows_icmp.h"

namespace veltrin {

int WindowsIcmp::WSAStartup(std::uint16_t version, WSADATA& data) {
  data.wVersion = version;
  data.iMaxSockets = 32767;
  return 0;
}

int WindowsIcmp::WSACleanup() { return 0; }

Icmp::Handle WindowsIcmp::IcmpCreateFile() { return kNoHandle; }

std::uint32_t WindowsIcmp::IcmpSendEcho(Handle /*handle*/, std::uint32_t /*address*/,
                                        const std::string& /*data*/, ICMP_ECHO_REPLY& reply,
                                        std::uint32_t /*replySize*/, std::uint32_t /*timeout*/) {
  reply.Status = kIpGeneralFailure;
  reply.RoundTripTime = kNoReplyTime;
  return 0;
}

bool WindowsIcmp::IcmpCloseHandle(Handle handle) { return handle != kNoHandle; }

}  // namespace veltrin
