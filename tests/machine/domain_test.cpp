// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/domain.h"

#include <gtest/gtest.h>

#include "temporary_tree.h"

namespace veltrin {
namespace {

class Domain : public ::testing::Test {
 protected:
  std::string of(const std::string& host) { return domainOf(tree_.files(), host); }

  TemporaryTree tree_;
};

TEST_F(Domain, StandsBehindTheFirstPointOfTheName) {
  EXPECT_EQ(of("mypc.office.example.net"), "office.example.net");
}

TEST_F(Domain, IsInTheFullNameAmongTheHosts) {
  tree_.put("/etc/hosts",
            "127.0.0.1\tlocalhost\n"
            "# 127.0.1.1 mypc.comment.example mypc\n"
            "192.0.2.9 other.wrong.example other\n"
            "127.0.1.1\tmypc.example.net\tmypc # this one\n");
  EXPECT_EQ(of("mypc"), "example.net");
}

TEST_F(Domain, IsNotThatOfTheLoopback) {
  tree_.put("/etc/hosts", "127.0.0.1 localhost.localdomain localhost mypc\n");
  EXPECT_EQ(of("localhost"), "");
  EXPECT_EQ(of("mypc"), "");
}

TEST_F(Domain, IsNotThatOfAnotherNameOnItsLine) {
  tree_.put("/etc/hosts", "127.0.1.1 server.example.net mypc\n");
  EXPECT_EQ(of("mypc"), "");
}

TEST_F(Domain, IsTheKernelsWhereTheNameHasNone) {
  tree_.put("/proc/sys/kernel/domainname", "nis.example\n");
  EXPECT_EQ(of("mypc"), "nis.example");
}

TEST_F(Domain, IsTheWorkgroupWhereThereIsNoOther) {
  tree_.put("/proc/sys/kernel/domainname", "(none)\n");
  tree_.put("/etc/samba/smb.conf", "[global]\n   workgroup = WORKGROUP\n[homes]\nworkgroup = X\n");
  EXPECT_EQ(of("mypc"), "WORKGROUP");
}

TEST_F(Domain, IsUnknownWhereNothingTellsIt) {
  EXPECT_EQ(of("mypc"), "");
  EXPECT_EQ(of(""), "");
}

TEST_F(Domain, OfGarbageIsUnknown) {
  for (const char* path : {"/etc/hosts", "/etc/samba/smb.conf"}) {
    tree_.put(path, "\xFF\x01garbage\n[global\nworkgroup\n");
  }
  tree_.put("/proc/sys/kernel/domainname", "");
  EXPECT_EQ(of("mypc"), "");
}

// --- Membership ---

TEST(DomainMembership, IsTrueOfANisDomain) {
  const TemporaryTree tree;
  tree.put("/proc/sys/kernel/domainname", "nis.example\n");
  tree.put("/etc/samba/smb.conf", "[global]\nsecurity = user\n");
  EXPECT_EQ(isMemberOfDomain(tree.files()), true);
}

std::optional<bool> memberWith(const std::string& security) {
  const TemporaryTree tree;
  tree.put("/proc/sys/kernel/domainname", "(none)\n");
  tree.put("/etc/samba/smb.conf", "[global]\nworkgroup = HOME\nsecurity = " + security + "\n");
  return isMemberOfDomain(tree.files());
}

TEST(DomainMembership, OfAWindowsDomainIsToldBySamba) {
  EXPECT_EQ(memberWith("ADS"), true);
  EXPECT_EQ(memberWith("domain"), true);
  EXPECT_EQ(memberWith("user"), std::nullopt);
  EXPECT_EQ(memberWith("auto"), std::nullopt);
}

TEST(DomainMembership, IsUnknownWhereNobodyTellsIt) {
  EXPECT_EQ(isMemberOfDomain(TemporaryTree().files()), std::nullopt);
}

}  // namespace
}  // namespace veltrin
