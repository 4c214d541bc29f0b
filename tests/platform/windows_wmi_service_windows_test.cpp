// SPDX-License-Identifier: GPL-3.0-or-later
// What becomes of the words of a service that a test writes: those that Wine's never says.
#include <cwchar>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "platform/windows/windows_wmi.h"
#include "tests/platform/scripted_wmi.h"

namespace veltrin {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::StrNe;

constexpr const char* kHere = "winmgmts:\\\\.\\root\\cimv2";
constexpr const char* kQuery = "Select * from Win32_Keyboard";

// Failures of the service, as the results of its calls.
constexpr auto kAccessDenied = static_cast<HRESULT>(WBEM_E_ACCESS_DENIED);
constexpr auto kFailed = static_cast<HRESULT>(WBEM_E_FAILED);
constexpr auto kInvalidClass = static_cast<HRESULT>(WBEM_E_INVALID_CLASS);
constexpr auto kInvalidQuery = static_cast<HRESULT>(WBEM_E_INVALID_QUERY);
constexpr auto kOutOfMemory = static_cast<HRESULT>(WBEM_E_OUT_OF_MEMORY);
constexpr auto kShuttingDown = static_cast<HRESULT>(WBEM_E_SHUTTING_DOWN);

WmiScript::Property text(const wchar_t* words) {
  return {S_OK, [words](VARIANT& value) {
            V_VT(&value) = VT_BSTR;
            V_BSTR(&value) = SysAllocString(words);
          }};
}

WmiScript::Property number(LONG told) {
  return {S_OK, [told](VARIANT& value) {
            V_VT(&value) = VT_I4;
            V_I4(&value) = told;
          }};
}

class WindowsWmiServiceTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(service_.registered(), S_OK);
    script_.threads.clear();  // the test's own
  }

  // The objects of the service that somebody holds. What nobody needs any more is released
  // behind the calls that were made before, and so before a connection that is refused.
  int alive() {
    script_.connecting = E_FAIL;
    EXPECT_THROW(wmi_.connect(kHere), StatementFailed);
    return script_.alive;
  }

  // The failure of a statement: its number.
  template <class Statement>
  static HRESULT failureOf(Statement&& statement) {
    try {
      statement();
    } catch (const StatementFailed& failure) {
      EXPECT_THAT(failure.what(), StrNe(""));
      return failure.number();
    }
    return S_OK;
  }

  // An object that has to be there. In its place comes one whose properties cannot be read.
  static WmiObject nextOf(WmiObjects& objects) {
    auto object = objects.next();
    EXPECT_TRUE(object);
    return object.value_or(WmiObject());
  }

  std::unique_ptr<WmiObjects> ask() { return wmi_.connect(kHere)->ExecQuery(kQuery, 48); }

  ScriptedWmi service_;
  WmiScript& script_ = *service_.script;
  WindowsWmi wmi_;
};

TEST_F(WindowsWmiServiceTest, ConnectsToTheMachineByItsNameAsTheUser) {
  wmi_.connect("winmgmts:\\\\KITCHEN\\root\\cimv2");
  EXPECT_EQ(script_.place, L"\\\\KITCHEN\\root\\cimv2");
  EXPECT_FALSE(script_.toldUser);
}

TEST_F(WindowsWmiServiceTest, ANameInAnyScriptGoesOutAsItIs) {
  wmi_.connect(
      "winmgmts:\\\\K\xC3\x9C"
      "CHE\\root\\cimv2");
  EXPECT_EQ(script_.place, L"\\\\K\u00DCCHE\\root\\cimv2");
}

TEST_F(WindowsWmiServiceTest, LimitsTheWaitForAMachine) {
  wmi_.connect(kHere);
  EXPECT_EQ(script_.connectFlags, WBEM_FLAG_CONNECT_USE_MAX_WAIT);
}

TEST_F(WindowsWmiServiceTest, ConnectsAnewEachTime) {
  const auto first = wmi_.connect(kHere);
  const auto second = wmi_.connect(kHere);
  EXPECT_EQ(script_.alive, 2);
}

TEST_F(WindowsWmiServiceTest, AsksInItsLanguageWithTheFlagsOfTheCaller) {
  wmi_.connect(kHere)->ExecQuery(kQuery, kWmiReturnImmediately + kWmiForwardOnly);
  EXPECT_EQ(script_.language, L"WQL");
  EXPECT_EQ(script_.query, L"Select * from Win32_Keyboard");
  EXPECT_EQ(script_.queryFlags, 48);
}

TEST_F(WindowsWmiServiceTest, WithoutFlagsDoesNotWaitForTheAnswerAndMayGoBackInIt) {
  wmi_.connect(kHere)->ExecQuery(kQuery, std::nullopt);
  EXPECT_EQ(script_.queryFlags, 16);
}

TEST_F(WindowsWmiServiceTest, LetsTheServiceActForTheUserBehindEachOfItsObjects) {
  ask();
  EXPECT_THAT(script_.impersonationLevels, ElementsAre(3, 3));
  EXPECT_THAT(script_.authenticationLevels, Each(RPC_C_AUTHN_LEVEL_PKT_INTEGRITY));
}

TEST_F(WindowsWmiServiceTest, LetsTheServiceActAsFarAsTheMonikerSays) {
  wmi_.connect("winmgmts:{impersonationLevel=identify}!\\\\.\\root\\cimv2")->ExecQuery(kQuery, 48);
  EXPECT_THAT(script_.impersonationLevels, ElementsAre(2, 2));
}

TEST_F(WindowsWmiServiceTest, FailsWhenItMayNotBeLetAct) {
  script_.securing = E_ACCESSDENIED;
  EXPECT_EQ(failureOf([&] { wmi_.connect(kHere); }), E_ACCESSDENIED);
}

TEST_F(WindowsWmiServiceTest, AQueryFailsWhenItsAnswerMayNotBeLetAct) {
  const auto service = wmi_.connect(kHere);
  script_.securing = E_ACCESSDENIED;
  EXPECT_EQ(failureOf([&] { service->ExecQuery(kQuery, 48); }), E_ACCESSDENIED);
}

TEST_F(WindowsWmiServiceTest, AConnectionThatIsRefusedFailsWithTheNumberOfTheService) {
  script_.connecting = kAccessDenied;
  EXPECT_EQ(failureOf([&] { wmi_.connect(kHere); }), kAccessDenied);
}

TEST_F(WindowsWmiServiceTest, AQueryThatIsRefusedFailsWithTheNumberOfTheService) {
  const auto service = wmi_.connect(kHere);
  script_.querying = kInvalidQuery;
  EXPECT_EQ(failureOf([&] { service->ExecQuery(kQuery, 48); }), kInvalidQuery);
}

TEST_F(WindowsWmiServiceTest, AQueryThatIsRefusedLaterFailsInTheFirstObject) {
  script_.ending = kInvalidClass;
  const auto objects = ask();
  EXPECT_EQ(failureOf([&] { objects->next(); }), kInvalidClass);
}

TEST_F(WindowsWmiServiceTest, AnAnswerThatBreaksOffFailsBehindItsLastObject) {
  script_.objects = {{{L"Name", text(L"one")}}};
  script_.ending = kShuttingDown;
  const auto objects = ask();
  EXPECT_EQ(nextOf(*objects).value("Name").text(), "one");
  EXPECT_EQ(failureOf([&] { objects->next(); }), kShuttingDown);
}

TEST_F(WindowsWmiServiceTest, HandsOverOneObjectAfterTheOtherAndLooksForNoMore) {
  script_.objects = {{{L"Name", text(L"one")}}, {{L"Name", text(L"two")}}, {}};
  const auto objects = ask();
  EXPECT_EQ(nextOf(*objects).value("Name").text(), "one");
  EXPECT_EQ(script_.objects.size(), 2U);
  EXPECT_EQ(script_.mostObjects, 1U);
  EXPECT_EQ(nextOf(*objects).value("Name").text(), "two");
}

TEST_F(WindowsWmiServiceTest, AnAnswerEndsBehindItsLastObject) {
  script_.objects = {{}};
  const auto objects = ask();
  EXPECT_TRUE(objects->next());
  EXPECT_FALSE(objects->next());
}

TEST_F(WindowsWmiServiceTest, AnObjectHasAllOfItsOwnProperties) {
  script_.objects = {{{L"Empty", {}}, {L"Name", text(L"Taste\u0301")}, {L"Speed", number(2600)}}};
  const auto object = ask()->next();
  ASSERT_TRUE(object);
  EXPECT_EQ(object->properties.size(), 3U);
  EXPECT_TRUE(object->value("empty").isNull());
  EXPECT_EQ(object->value("NAME").text(), "Taste\xCC\x81");
  EXPECT_EQ(object->value("speed").number(), 2600);
  EXPECT_EQ(script_.nameFlags, WBEM_FLAG_NONSYSTEM_ONLY);
}

TEST_F(WindowsWmiServiceTest, APropertyThatFailsIsMissingAndTheOthersAreNot) {
  script_.objects = {{{L"Bad", {kFailed, {}}}, {L"Speed", number(7)}}};
  const auto object = ask()->next();
  ASSERT_TRUE(object);
  EXPECT_THROW(object->value("Bad"), StatementFailed);
  EXPECT_EQ(object->value("Speed").number(), 7);
}

TEST_F(WindowsWmiServiceTest, AnObjectThatDoesNotTellItsPropertiesFails) {
  script_.objects = {{{L"Speed", number(7)}}};
  script_.naming = kOutOfMemory;
  const auto objects = ask();
  EXPECT_EQ(failureOf([&] { objects->next(); }), kOutOfMemory);
}

TEST_F(WindowsWmiServiceTest, AllCallsComOnOneThreadThatIsNotTheCallers) {
  script_.objects = {{}, {}};
  {
    const auto objects = ask();
    while (objects->next()) continue;
  }
  alive();
  ASSERT_FALSE(script_.threads.empty());
  EXPECT_NE(script_.threads.front(), GetCurrentThreadId());
  EXPECT_THAT(script_.threads, Each(script_.threads.front()));
}

TEST_F(WindowsWmiServiceTest, NothingOfTheServiceIsHeldBehindAWalk) {
  script_.objects = {{{L"Name", text(L"one")}}, {}};
  {
    const auto objects = ask();
    while (objects->next()) continue;
  }
  EXPECT_EQ(alive(), 0);
}

TEST_F(WindowsWmiServiceTest, NothingIsHeldBehindFailuresAndDroppedAnswers) {
  for (int round = 0; round < 200; ++round) {
    script_.objects = {{{L"Name", text(L"one")}}, {}};
    script_.naming = round % 2 == 0 ? S_OK : kFailed;
    script_.querying = round % 3 == 0 ? kFailed : S_OK;
    script_.securing = round % 5 == 0 ? E_ACCESSDENIED : S_OK;
    skip([&] { ask()->next(); });
  }
  script_.securing = S_OK;
  EXPECT_EQ(alive(), 0);
}

TEST_F(WindowsWmiServiceTest, NothingIsHeldBehindTheEnd) {
  script_.objects = {{}, {}};
  std::unique_ptr<WmiObjects> objects;
  {
    WindowsWmi wmi;
    const auto service = wmi.connect(kHere);
    objects = service->ExecQuery(kQuery, 48);
    objects->next();
  }
  EXPECT_TRUE(objects->next());  // comes behind the release of the connection
  EXPECT_EQ(script_.alive, 1);
  objects.reset();
  EXPECT_EQ(script_.alive, 0);
}

TEST_F(WindowsWmiServiceTest, ASlowServiceIsWaitedForWithTheMeansOfTheCaller) {
  const HANDLE gong = CreateEventA(nullptr, TRUE, FALSE, nullptr);
  script_.objects = {{{L"Name", text(L"late")}}};
  script_.beforeNext = [&] { WaitForSingleObject(gong, INFINITE); };
  bool wasSilent = false;
  WindowsWmi wmi([&](void* event) {
    wasSilent = WaitForSingleObject(event, 0) == WAIT_TIMEOUT;
    SetEvent(gong);
    WaitForSingleObject(event, INFINITE);
  });
  const auto objects = wmi.connect(kHere)->ExecQuery(kQuery, 48);
  // The calls before have struck the gong as well.
  ResetEvent(gong);
  wasSilent = false;
  EXPECT_EQ(nextOf(*objects).value("Name").text(), "late");
  EXPECT_TRUE(wasSilent);
  CloseHandle(gong);
}

}  // namespace
}  // namespace veltrin
