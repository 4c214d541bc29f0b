// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/connections.h"

#include <gtest/gtest.h>

#include "fake_machine.h"
#include "temporary_tree.h"

namespace veltrin {
namespace {

// An answer of the DHCP server 192.0.2.1 that lends 192.0.2.7 (RFC 2131).
std::string dhcpMessage(const std::string& options = std::string("\x35\x01\x05\x00\x36\x04"
                                                                 "\xC0\x00\x02\x01\xFF",
                                                                 11)) {
  std::string message(236, '\0');
  message.replace(16, 4, std::string("\xC0\x00\x02\x07", 4));
  return message + "\x63\x82\x53\x63" + options;
}

class Connection : public ::testing::Test {
 protected:
  ConnectionFacts facts() { return connectionFacts(tree_.files(), interface_); }

  // "Yes", "No" or "" for what is known of DHCP, and the server.
  std::string dhcp() {
    const ConnectionFacts known = facts();
    return std::string(!known.dhcp   ? ""
                       : *known.dhcp ? "Yes"
                                     : "No") +
           (known.dhcpServer.empty() ? "" : " " + known.dhcpServer);
  }

  void putManagedConnection(const std::string& more) {
    tree_.put("/run/NetworkManager/devices/2", "[device]\nmanaged=1\nconnection-uuid=u-2\n");
    tree_.put("/etc/NetworkManager/system-connections/a.nmconnection",
              "[connection]\nid=Other\nuuid=u-1\n");
    tree_.put("/etc/NetworkManager/system-connections/b.nmconnection",
              "[connection]\nid=Wired connection 1\nuuid=u-2\n" + more);
  }

  TemporaryTree tree_;
  NetworkInterface interface_ = withAddress(makeInterface(2, "eth0"), "192.0.2.7");
};

using DhcpLeases = Connection;
using DhcpSettings = Connection;

// --- Its name ---

TEST_F(Connection, BearsTheNameThatNetworkManagerGaveIt) {
  putManagedConnection("");
  EXPECT_EQ(facts().name, "Wired connection 1");
}

TEST_F(Connection, ThatMayNotBeReadHasNoName) {
  tree_.put("/run/NetworkManager/devices/2", "[device]\nconnection-uuid=u-2\n");
  EXPECT_EQ(facts().name, "");
}

TEST_F(Connection, ThatNobodyManagesHasNoName) { EXPECT_EQ(facts().name, ""); }

// --- Leases ---

TEST_F(DhcpLeases, OfNetworkdNameTheServer) {
  tree_.put("/run/systemd/netif/leases/2",
            "# This is private data. Do not parse.\nADDRESS=192.0.2.7\nNETMASK=255.255.255.0\n"
            "SERVER_ADDRESS=192.0.2.1\n");
  EXPECT_EQ(dhcp(), "Yes 192.0.2.1");
}

TEST_F(DhcpLeases, OfNetworkManagerNameTheServer) {
  tree_.put("/var/lib/NetworkManager/internal-u-2-eth0.lease",
            "ADDRESS=192.0.2.7\nSERVER_ADDRESS=192.0.2.1\n");
  EXPECT_EQ(dhcp(), "Yes 192.0.2.1");
}

TEST_F(DhcpLeases, WithoutAServerTellThatDhcpIsInUse) {
  tree_.put("/var/lib/NetworkManager/internal-u-2-eth0.lease", "ADDRESS=192.0.2.7\n");
  EXPECT_EQ(dhcp(), "Yes");
}

TEST_F(DhcpLeases, OfAnotherInterfaceCountForNothing) {
  tree_.put("/var/lib/NetworkManager/internal-u-2-eth1.lease",
            "ADDRESS=192.0.2.7\nSERVER_ADDRESS=192.0.2.1\n");
  tree_.put("/run/systemd/netif/leases/3", "ADDRESS=192.0.2.7\nSERVER_ADDRESS=192.0.2.1\n");
  tree_.put("/var/lib/dhcpcd/eth1.lease", dhcpMessage());
  EXPECT_EQ(dhcp(), "");
}

TEST_F(DhcpLeases, OfAnAddressThatIsGoneCountForNothing) {
  tree_.put("/run/systemd/netif/leases/2", "ADDRESS=192.0.2.99\nSERVER_ADDRESS=192.0.2.1\n");
  EXPECT_EQ(dhcp(), "");
}

TEST_F(DhcpLeases, OfDhclientAreFoundInEachOfItsFolders) {
  const std::string lease =
      "lease {\n"
      "  interface \"eth0\";\n"
      "  fixed-address 192.0.2.7;\n"
      "  option subnet-mask 255.255.255.0;\n"
      "  option dhcp-server-identifier 192.0.2.1;\n"
      "  expire 5 2026/01/30 16:22:51;\n"
      "}\n";
  for (const char* path : {"/var/lib/dhcp/dhclient.eth0.leases", "/var/lib/dhcp/dhclient.leases",
                           "/var/lib/dhclient/dhclient--eth0.lease",
                           "/var/lib/NetworkManager/dhclient-u-2-eth0.lease"}) {
    const TemporaryTree tree;
    tree.put(path, lease);
    EXPECT_EQ(connectionFacts(tree.files(), interface_).dhcpServer, "192.0.2.1") << path;
  }
}

TEST_F(DhcpLeases, OfDhclientAreTheLastOfTheInterface) {
  const auto lease = leaseOfDhclient(
      "lease {\n interface \"eth0\";\n fixed-address 192.0.2.7;\n"
      " option dhcp-server-identifier 192.0.2.1;\n}\n"
      "lease {\n interface \"eth0\";\n fixed-address 192.0.2.7;\n"
      " option dhcp-server-identifier 192.0.2.2;\n}\n"
      "lease {\n interface \"eth1\";\n fixed-address 192.0.2.7;\n"
      " option dhcp-server-identifier 192.0.2.3;\n}\n"
      "lease {\n interface \"eth0\";\n fixed-address 192.0.2.8;\n"
      " option dhcp-server-identifier 192.0.2.4;\n}\n"
      "lease {\n interface \"eth0\";\n fixed-address 192.0.2.7;\n"
      " option dhcp-server-identifier 192.0.2.5;\n",
      interface_);
  ASSERT_TRUE(lease && lease->server);
  EXPECT_EQ(lease->server->text(), "192.0.2.2");
}

TEST_F(DhcpLeases, OfDhclientInGarbageAreNone) {
  EXPECT_FALSE(leaseOfDhclient("}\n}\nlease\ninterface\nfixed-address\n\xFF\n}", interface_));
}

TEST_F(DhcpLeases, OfDhcpcdAreTheServersMessage) {
  for (const char* path : {"/var/lib/dhcpcd/eth0.lease", "/var/lib/dhcpcd/eth0-Home.lease",
                           "/var/lib/dhcpcd5/dhcpcd-eth0.lease", "/var/db/dhcpcd/eth0.lease"}) {
    const TemporaryTree tree;
    tree.put(path, dhcpMessage());
    EXPECT_EQ(connectionFacts(tree.files(), interface_).dhcpServer, "192.0.2.1") << path;
  }
}

TEST(DhcpMessage, LendsAnAddressEvenWithoutOptions) {
  const auto lease = leaseInMessage(dhcpMessage(""));
  ASSERT_TRUE(lease && lease->address);
  EXPECT_EQ(lease->address->text(), "192.0.2.7");
  EXPECT_FALSE(lease->server);
}

TEST(DhcpMessage, NamesNoServerBehindItsEnd) {
  EXPECT_FALSE(
      leaseInMessage(dhcpMessage(std::string("\xFF\x00\x36\x04\xC0\x00\x02\x01", 8)))->server);
}

TEST(DhcpMessage, NamesNoServerInABrokenOption) {
  for (const std::string& options : {std::string("\x36"), std::string("\x36\x04\xC0\x00\x02", 5),
                                     std::string("\x36\x03\xC0\x00\x02", 5),
                                     std::string("\x35\x20\x36\x04\xC0\x00\x02\x01", 8)}) {
    EXPECT_FALSE(leaseInMessage(dhcpMessage(options))->server);
  }
}

TEST(DhcpMessage, IsNoOtherBytes) {
  EXPECT_FALSE(leaseInMessage(""));
  EXPECT_FALSE(leaseInMessage(dhcpMessage().substr(0, 239)));
  std::string message = dhcpMessage();
  message[236] = 'x';
  EXPECT_FALSE(leaseInMessage(message));
}

// --- Settings ---

TEST_F(DhcpSettings, AreUnknownWhereNobodyTellsThem) { EXPECT_EQ(dhcp(), ""); }

TEST_F(DhcpSettings, FollowFromAnAddressThatRunsOut) {
  interface_.addresses[0].lasting = false;
  EXPECT_EQ(dhcp(), "Yes");
}

TEST_F(DhcpSettings, DoNotFollowFromAnIpv6AddressThatRunsOut) {
  interface_.addresses.push_back({*Address::parse("2001:db8::7"), false});
  EXPECT_EQ(dhcp(), "");
}

TEST_F(DhcpSettings, OfNetworkManagerAreTheMethodOfTheConnection) {
  putManagedConnection("[ipv4]\nmethod=auto\n[ipv6]\nmethod=manual\n");
  EXPECT_EQ(dhcp(), "Yes");
  putManagedConnection("[ipv4]\nmethod=manual\n[ipv6]\nmethod=auto\n");
  EXPECT_EQ(dhcp(), "No");
}

TEST_F(DhcpSettings, OfNetworkdStandInItsNetworkFile) {
  tree_.put("/run/systemd/netif/links/2",
            "ADMIN_STATE=configured\nNETWORK_FILE=/etc/systemd/network/a.network\n");
  for (const auto& [wish, known] : {std::pair("DHCP=yes\n", "Yes"), std::pair("DHCP=ipv4\n", "Yes"),
                                    std::pair("DHCP=no\n", "No"), std::pair("DHCP=ipv6\n", "No"),
                                    std::pair("Address=192.0.2.7/24\n", "No")}) {
    tree_.put("/etc/systemd/network/a.network",
              "[Match]\nName=eth0\n[Network]\n" + std::string(wish));
    EXPECT_EQ(dhcp(), known) << wish;
  }
}

TEST_F(DhcpSettings, OfNetworkdThatOtherFilesAmendAreUnknown) {
  tree_.put("/run/systemd/netif/links/2",
            "NETWORK_FILE=/etc/systemd/network/a.network\n"
            "NETWORK_FILE_DROPINS=\"/etc/systemd/network/a.network.d/b.conf\"\n");
  tree_.put("/etc/systemd/network/a.network", "[Network]\nDHCP=no\n");
  EXPECT_EQ(dhcp(), "");
}

TEST_F(DhcpSettings, OfNetworkdWithoutAReadableFileAreUnknown) {
  tree_.put("/run/systemd/netif/links/2", "NETWORK_FILE=/etc/systemd/network/a.network\n");
  EXPECT_EQ(dhcp(), "");
}

TEST_F(DhcpSettings, OfIfupdownStandInItsFiles) {
  tree_.put("/run/network/ifstate", "lo=lo\neth0=eth0\n");
  tree_.put("/etc/network/interfaces", "auto lo\niface lo inet loopback\n");
  EXPECT_EQ(dhcp(), "");
  tree_.put("/etc/network/interfaces.d/setup", "auto eth0\niface eth0 inet static\n  address x\n");
  EXPECT_EQ(dhcp(), "No");
  tree_.put("/etc/network/interfaces", "iface eth0 inet6 auto\niface eth0 inet dhcp\n");
  EXPECT_EQ(dhcp(), "Yes");
}

TEST_F(DhcpSettings, OfIfupdownGoByTheNameOfTheSettings) {
  tree_.put("/run/network/ifstate.eth0", "eth0=office\n");
  tree_.put("/etc/network/interfaces", "iface eth0 inet static\niface office inet dhcp\n");
  EXPECT_EQ(dhcp(), "Yes");
}

TEST_F(DhcpSettings, OfIfupdownThatDidNotSetItUpCountForNothing) {
  tree_.put("/etc/network/interfaces", "iface eth0 inet dhcp\n");
  EXPECT_EQ(dhcp(), "");
}

}  // namespace
}  // namespace veltrin
