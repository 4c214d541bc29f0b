// SPDX-License-Identifier: GPL-3.0-or-later
// What the service of this Windows answers. Under Wine it knows some classes and no others.
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <objbase.h>
#include <regex>
#include <string>
#include <thread>
#include <vector>
#include <wbemcli.h>
#include <windows.h>

#include "platform/windows/windows_environment.h"
#include "platform/windows/windows_wmi.h"

namespace veltrin {
namespace {

using testing::AnyOf;

const std::string kHere = "winmgmts:\\\\.\\root\\cimv2";

// The number of the next handle: the system gives the lowest that is free.
std::uintptr_t nextHandle() {
  const HANDLE handle = CreateEventA(nullptr, TRUE, FALSE, nullptr);
  CloseHandle(handle);
  return reinterpret_cast<std::uintptr_t>(handle);
}

class WindowsWmiTest : public testing::Test {
 protected:
  // An object that has to be there. In its place comes one whose properties cannot be read.
  static WmiObject nextOf(WmiObjects& objects) {
    auto object = objects.next();
    EXPECT_TRUE(object);
    return object.value_or(WmiObject());
  }

  // The first object of a class.
  WmiObject first(const std::string& name) {
    SCOPED_TRACE(name);
    return nextOf(*wmi_.connect(kHere)->ExecQuery("Select * from " + name, 48));
  }

  int count(WmiObjects& objects) {
    int count = 0;
    while (objects.next()) ++count;
    return count;
  }

  int numberOfFailure(const std::function<void()>& statement) {
    try {
      statement();
    } catch (const StatementFailed& failure) {
      EXPECT_STRNE(failure.what(), "");
      return failure.number();
    }
    return 0;
  }

  WindowsWmi wmi_;
};

TEST_F(WindowsWmiTest, KnowsThisMachineByItsName) {
  const std::string name = WindowsEnvironment().variable("Computername");
  ASSERT_NE(name, "");
  const auto service = wmi_.connect("winmgmts:\\\\" + name + "\\root\\cimv2");
  const auto objects = service->ExecQuery("Select * from Win32_ComputerSystem", 48);
  EXPECT_EQ(nextOf(*objects).value("Name").text(), name);
}

TEST_F(WindowsWmiTest, TakesTheMonikerOfThisMachineWithSettings) {
  const auto service =
      wmi_.connect("winmgmts: {impersonationLevel=impersonate}!\\\\.\\root\\cimv2");
  EXPECT_TRUE(service->ExecQuery("Select * from Win32_OperatingSystem", std::nullopt)->next());
}

TEST_F(WindowsWmiTest, ATextIsAText) {
  EXPECT_NE(first("Win32_OperatingSystem").value("Caption").text(), "");
}

TEST_F(WindowsWmiTest, ANumberIsTheMachinesOwn) {
  SYSTEM_INFO system{};
  GetNativeSystemInfo(&system);
  EXPECT_EQ(first("Win32_ComputerSystem").value("NumberOfLogicalProcessors").number(),
            system.dwNumberOfProcessors);
}

TEST_F(WindowsWmiTest, AFlagIsTrueOrFalse) {
  EXPECT_EQ(first("Win32_OperatingSystem").value("Primary").text(), "True");
}

TEST_F(WindowsWmiTest, ANumberOf64BitsIsTheTextOfItsDigits) {
  MEMORYSTATUSEX memory{};
  memory.dwLength = sizeof memory;
  ASSERT_TRUE(GlobalMemoryStatusEx(&memory));
  EXPECT_EQ(first("Win32_ComputerSystem").value("TotalPhysicalMemory").text(),
            std::to_string(memory.ullTotalPhys));
}

TEST_F(WindowsWmiTest, ADateIsTheTextOfTheService) {
  EXPECT_TRUE(std::regex_match(first("Win32_OperatingSystem").value("LastBootUpTime").text(),
                               std::regex("[0-9]{14}\\.[0-9]{6}[+-][0-9]+")));
}

TEST_F(WindowsWmiTest, WhatTheServiceDoesNotKnowIsNull) {
  EXPECT_TRUE(first("Win32_Processor").value("UniqueId").isNull());
}

TEST_F(WindowsWmiTest, ATableIsItsElements) {
  const auto objects = wmi_.connect(kHere)->ExecQuery(
      "Select * from Win32_NetworkAdapterConfiguration where IPEnabled = True", 48);
  std::size_t elements = 0;
  while (const auto card = objects->next()) {
    const WmiValue& addresses = card->value("IPAddress");
    if (addresses.isNull()) continue;
    for (const Loose& address : addresses.elements()) {
      EXPECT_EQ(address.text().find_first_not_of("0123456789abcdef:.%"), std::string::npos)
          << address.text();
      ++elements;
    }
  }
  if (elements == 0) GTEST_SKIP() << "no network card of this machine has an address";
}

TEST_F(WindowsWmiTest, PropertiesAreFoundInAnyCase) {
  const WmiObject system = first("Win32_ComputerSystem");
  EXPECT_EQ(system.value("domain").text(), system.value("Domain").text());
  EXPECT_NE(system.value("DOMAIN").text(), "");
}

TEST_F(WindowsWmiTest, ThePropertiesOfTheSystemItselfAreNotAmongThem) {
  for (const auto& [name, value] : first("Win32_ComputerSystem").properties) {
    EXPECT_FALSE(name.starts_with("__")) << name;
  }
}

TEST_F(WindowsWmiTest, APropertyThatTheClassLacksCannotBeRead) {
  EXPECT_THROW(first("Win32_ComputerSystem").value("Colour"), StatementFailed);
}

TEST_F(WindowsWmiTest, AnUnknownNamespaceIsRefused) {
  EXPECT_EQ(numberOfFailure([&] { wmi_.connect("winmgmts:\\\\.\\root\\nothing"); }),
            static_cast<int>(WBEM_E_INVALID_NAMESPACE));
}

TEST_F(WindowsWmiTest, AMachineThatIsNotThereIsRefused) {
  EXPECT_NE(numberOfFailure([&] { wmi_.connect("winmgmts:\\\\nobody.invalid\\root\\cimv2"); }), 0);
}

TEST_F(WindowsWmiTest, AMonikerOfAnotherFormIsASyntaxError) {
  for (const char* moniker : {"", "winmgmts:", "winmgmts:root\\cimv2", "winmgmts:\\\\\\root\\cimv2",
                              "winmgmts:{impersonationLevel=nobody}!\\\\.\\root\\cimv2"}) {
    EXPECT_EQ(numberOfFailure([&] { wmi_.connect(moniker); }), MK_E_SYNTAX) << moniker;
  }
}

TEST_F(WindowsWmiTest, AQueryThatIsNoneIsRefusedAtOnce) {
  const auto service = wmi_.connect(kHere);
  for (const char* query : {"Select", "Drop * from Win32_Processor", "Select * from"}) {
    EXPECT_EQ(numberOfFailure([&] { service->ExecQuery(query, 48); }),
              static_cast<int>(WBEM_E_INVALID_QUERY))
        << query;
  }
  EXPECT_NE(numberOfFailure([&] { service->ExecQuery("", 48); }), 0);
}

TEST_F(WindowsWmiTest, AfterARefusalTheConnectionAnswersOthers) {
  const auto service = wmi_.connect(kHere);
  ASSERT_THROW(service->ExecQuery("Select", 48), StatementFailed);
  EXPECT_TRUE(service->ExecQuery("Select * from Win32_Processor", 48)->next());
}

// Windows fails with the first object; Wine takes the class for one without objects.
TEST_F(WindowsWmiTest, AnUnknownClassHasNoObjectsWhateverTheFlags) {
  const auto service = wmi_.connect(kHere);
  for (const auto& flags : {std::optional<std::int32_t>(), std::optional<std::int32_t>(48)}) {
    std::unique_ptr<WmiObjects> objects;
    ASSERT_NO_THROW(objects = service->ExecQuery("Select * from Win32_Nothing", flags));
    std::optional<WmiObject> object;
    EXPECT_THAT(numberOfFailure([&] { object = objects->next(); }),
                AnyOf(0, static_cast<int>(WBEM_E_INVALID_CLASS)));
    EXPECT_FALSE(object);
  }
}

TEST_F(WindowsWmiTest, WalksTwoAnswersInTurn) {
  const auto service = wmi_.connect(kHere);
  const auto drives = service->ExecQuery("Select * from Win32_LogicalDisk", 48);
  const auto same = service->ExecQuery("Select * from Win32_LogicalDisk", 48);
  int walked = 0;
  while (const auto drive = drives->next()) {
    EXPECT_EQ(nextOf(*same).value("Caption").text(), drive->value("Caption").text());
    ++walked;
  }
  EXPECT_FALSE(same->next());
  EXPECT_GE(walked, 1);
}

TEST_F(WindowsWmiTest, AnAnswerOutlivesItsConnectionAndWhoeverMadeIt) {
  auto wmi = std::make_unique<WindowsWmi>();
  auto service = wmi->connect(kHere);
  const auto drives = service->ExecQuery("Select * from Win32_LogicalDisk", 48);
  service.reset();
  wmi.reset();
  EXPECT_GE(count(*drives), 1);
}

TEST_F(WindowsWmiTest, AnAnswerThatIsDroppedInItsMiddleHoldsNobodyUp) {
  const auto service = wmi_.connect(kHere);
  auto drives = service->ExecQuery("Select * from Win32_LogicalDisk", 48);
  ASSERT_TRUE(drives->next());
  drives.reset();
  EXPECT_GE(count(*service->ExecQuery("Select * from Win32_LogicalDisk", 48)), 1);
}

TEST_F(WindowsWmiTest, WhoeverWaitsIsToldOfEachCall) {
  int waits = 0;
  WindowsWmi wmi([&](void* event) {
    ++waits;
    EXPECT_EQ(WaitForSingleObject(event, INFINITE), WAIT_OBJECT_0);
  });
  const auto service = wmi.connect(kHere);
  EXPECT_EQ(waits, 1);
  const auto objects = service->ExecQuery("Select * from Win32_ComputerSystem", 48);
  EXPECT_EQ(waits, 2);
  EXPECT_EQ(count(*objects), 1);
  EXPECT_EQ(waits, 4);
}

TEST_F(WindowsWmiTest, TwoHundredConnectionsLeaveNoHandlesBehind) {
  const auto ask = [&] {
    const auto objects = wmi_.connect(kHere)->ExecQuery("Select * from Win32_ComputerSystem", 48);
    ASSERT_EQ(count(*objects), 1);
  };
  for (int warm = 0; warm < 5; ++warm) ask();
  const std::uintptr_t before = nextHandle();
  for (int connection = 0; connection < 200; ++connection) ask();
  EXPECT_LE(nextHandle(), before + 4 * 20);  // handles are numbered in fours
}

class CallersApartmentTest : public WindowsWmiTest, public testing::WithParamInterface<COINIT> {};

TEST_P(CallersApartmentTest, DoesNotMatterAndStays) {
  std::thread caller([&] {
    ASSERT_EQ(CoInitializeEx(nullptr, GetParam()), S_OK);
    APTTYPE before{};
    APTTYPE after{};
    APTTYPEQUALIFIER qualifier{};
    EXPECT_EQ(CoGetApartmentType(&before, &qualifier), S_OK);
    {
      WindowsWmi wmi;
      const auto service = wmi.connect(kHere);
      EXPECT_TRUE(service->ExecQuery("Select * from Win32_Processor", 48)->next());
    }
    EXPECT_EQ(CoGetApartmentType(&after, &qualifier), S_OK);
    EXPECT_EQ(after, before);
    CoUninitialize();
  });
  caller.join();
}

INSTANTIATE_TEST_SUITE_P(EachWay, CallersApartmentTest,
                         testing::Values(COINIT_APARTMENTTHREADED, COINIT_MULTITHREADED));

// The classes that the report asks for. Wine has the objects of some on every machine.
class ClassOfTheReportTest : public WindowsWmiTest,
                             public testing::WithParamInterface<const char*> {
 protected:
  int countOfClass() {
    return count(*wmi_.connect(kHere)->ExecQuery(std::string("Select * from ") + GetParam(), 48));
  }
};

std::string nameOfClass(const testing::TestParamInfo<const char*>& tested) { return tested.param; }

using ClassOfEveryMachineTest = ClassOfTheReportTest;

TEST_P(ClassOfEveryMachineTest, HasAnObject) { EXPECT_GE(countOfClass(), 1); }

INSTANTIATE_TEST_SUITE_P(Classes, ClassOfEveryMachineTest,
                         testing::Values("Win32_Processor", "Win32_PhysicalMemory",
                                         "Win32_LogicalDisk", "Win32_DiskDrive", "Win32_BaseBoard",
                                         "Win32_videocontroller", "Win32_DesktopMonitor",
                                         "Win32_SoundDevice", "Win32_ComputerSystem"),
                         nameOfClass);

using ClassOfSomeMachinesTest = ClassOfTheReportTest;

TEST_P(ClassOfSomeMachinesTest, AnswersWithoutAFailure) { EXPECT_NO_THROW(countOfClass()); }

INSTANTIATE_TEST_SUITE_P(Classes, ClassOfSomeMachinesTest, testing::Values("Win32_Printer"),
                         nameOfClass);

}  // namespace
}  // namespace veltrin
