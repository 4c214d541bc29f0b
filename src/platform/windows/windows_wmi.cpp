// SPDX-License-Identifier: GPL-3.0-or-later
// Each of these stands on the one before.
// clang-format off
#include <windows.h>
#include <objbase.h>
#include <oleauto.h>
#include <wbemcli.h>
// clang-format on

#include "platform/windows/windows_wmi.h"

#include <array>
#include <cstdio>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/portable/wmi_moniker.h"
#include "platform/windows/code_page.h"
#include "platform/windows/com_pointer.h"
#include "platform/windows/wmi_variant.h"

namespace veltrin {
namespace {

static_assert(kWmiReturnImmediately == WBEM_FLAG_RETURN_IMMEDIATELY);
static_assert(kWmiForwardOnly == WBEM_FLAG_FORWARD_ONLY);

// A text in the form of COM.
class ComText {
 public:
  ComText() = default;
  explicit ComText(std::string_view utf8) {
    const std::wstring wide = toWide(utf8);
    text_ = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
  }
  ~ComText() { SysFreeString(text_); }
  ComText(const ComText&) = delete;
  ComText& operator=(const ComText&) = delete;

  BSTR get() const { return text_; }
  BSTR* out() { return &text_; }  // only while there is no text
  std::string utf8() const { return fromWide({text_, SysStringLen(text_)}); }

 private:
  BSTR text_ = nullptr;
};

template <class Interface>
HRESULT create(const CLSID& classOf, ComPointer<Interface>& made) {
  return CoCreateInstance(classOf, nullptr, CLSCTX_INPROC_SERVER, __uuidof(Interface),
                          reinterpret_cast<void**>(made.out()));
}

// The service's words for a failure, in the user's language, or its number.
std::string wordsOf(HRESULT failure) {
  std::string words;
  ComPointer<IWbemStatusCodeText> texts;
  ComText text;
  if (SUCCEEDED(create(CLSID_WbemStatusCodeText, texts)) &&
      SUCCEEDED(texts->GetErrorCodeText(failure, 0, 0, text.out())) && text.get() != nullptr) {
    words = text.utf8();
  }
  while (!words.empty() && static_cast<unsigned char>(words.back()) <= ' ') words.pop_back();
  if (!words.empty()) return words;
  std::array<char, 40> number{};
  std::snprintf(number.data(), number.size(), "Failure 0x%08lX of WMI",
                static_cast<unsigned long>(failure));
  return number.data();
}

void require(HRESULT result) {
  if (FAILED(result)) throw StatementFailed(wordsOf(result), static_cast<int>(result));
}

// Lets the service act for the user behind this object. One that lies in this process has no
// such settings and needs none.
void actForUser(IUnknown* object, DWORD impersonationLevel) {
  const HRESULT result = CoSetProxyBlanket(object, RPC_C_AUTHN_DEFAULT, RPC_C_AUTHZ_DEFAULT,
                                           COLE_DEFAULT_PRINCIPAL, RPC_C_AUTHN_LEVEL_PKT_INTEGRITY,
                                           impersonationLevel, COLE_DEFAULT_AUTHINFO, EOAC_DEFAULT);
  if (result != E_NOINTERFACE) require(result);
}

ComPointer<IWbemServices> connectionTo(const WmiMoniker& moniker) {
  ComPointer<IWbemLocator> locator;
  require(create(CLSID_WbemLocator, locator));
  const ComText place("\\\\" + moniker.machine + "\\" + moniker.spaceName);
  ComPointer<IWbemServices> services;
  require(locator->ConnectServer(place.get(), nullptr, nullptr, nullptr,
                                 WBEM_FLAG_CONNECT_USE_MAX_WAIT, nullptr, nullptr, services.out()));
  actForUser(services.get(), moniker.impersonationLevel);
  return services;
}

ComPointer<IEnumWbemClassObject> answerTo(IWbemServices& services, const std::string& query,
                                          std::int32_t flags, DWORD impersonationLevel) {
  const ComText language("WQL");
  const ComText text(query);
  ComPointer<IEnumWbemClassObject> answer;
  require(services.ExecQuery(language.get(), text.get(), flags, nullptr, answer.out()));
  actForUser(answer.get(), impersonationLevel);
  return answer;
}

// The names of an object's own properties.
class PropertyNames {
 public:
  explicit PropertyNames(IWbemClassObject& object) {
    require(
        object.GetNames(nullptr, WBEM_FLAG_ALWAYS | WBEM_FLAG_NONSYSTEM_ONLY, nullptr, &names_));
    SafeArrayGetLBound(names_, 1, &first_);
    SafeArrayGetUBound(names_, 1, &last_);
  }
  ~PropertyNames() { SafeArrayDestroy(names_); }
  PropertyNames(const PropertyNames&) = delete;
  PropertyNames& operator=(const PropertyNames&) = delete;

  template <class Visit>
  void forEach(Visit visit) const {
    for (LONG index = first_; index <= last_; ++index) {
      ComText name;
      require(SafeArrayGetElement(names_, &index, static_cast<void*>(name.out())));
      visit(name);
    }
  }

 private:
  SAFEARRAY* names_ = nullptr;
  LONG first_ = 0;
  LONG last_ = -1;
};

// A property that cannot be read is none of the object's.
WmiObject objectOf(IWbemClassObject& object) {
  WmiObject facts;
  PropertyNames(object).forEach([&](const ComText& name) {
    VARIANT value;
    VariantInit(&value);
    if (SUCCEEDED(object.Get(name.get(), 0, &value, nullptr, nullptr))) {
      facts.properties.emplace(name.utf8(), wmiValueOf(value));
    }
    VariantClear(&value);
  });
  return facts;
}

std::optional<WmiObject> nextOf(IEnumWbemClassObject& answer) {
  ComPointer<IWbemClassObject> object;
  ULONG count = 0;
  require(answer.Next(static_cast<LONG>(WBEM_INFINITE), 1, object.out(), &count));
  if (count == 0) return std::nullopt;
  return objectOf(*object);
}

// An object and the thread on which it is at home. It is used and released there.
template <class Interface>
class AtHome {
 public:
  AtHome(std::shared_ptr<ComThread> thread, ComPointer<Interface> object)
      : thread_(std::move(thread)),
        object_(std::make_shared<ComPointer<Interface>>(std::move(object))) {}
  ~AtHome() {
    thread_->post([object = std::move(object_)] {});
  }
  AtHome(const AtHome&) = delete;
  AtHome& operator=(const AtHome&) = delete;

  const std::shared_ptr<ComThread>& thread() const { return thread_; }

  // Hands the object to `use`, and returns or throws what that does.
  template <class Use>
  auto call(Use use) const {
    return thread_->call([object = object_, use = std::move(use)] { return use(**object); });
  }

 private:
  std::shared_ptr<ComThread> thread_;
  std::shared_ptr<ComPointer<Interface>> object_;
};

class WindowsWmiObjects : public WmiObjects {
 public:
  WindowsWmiObjects(std::shared_ptr<ComThread> thread, ComPointer<IEnumWbemClassObject> answer)
      : answer_(std::move(thread), std::move(answer)) {}

  std::optional<WmiObject> next() override { return answer_.call(nextOf); }

 private:
  AtHome<IEnumWbemClassObject> answer_;
};

class WindowsWmiService : public WmiService {
 public:
  WindowsWmiService(std::shared_ptr<ComThread> thread, ComPointer<IWbemServices> services,
                    DWORD impersonationLevel)
      : services_(std::move(thread), std::move(services)),
        impersonationLevel_(impersonationLevel) {}

  std::unique_ptr<WmiObjects> ExecQuery(const std::string& query,
                                        std::optional<std::int32_t> flags) override {
    auto ask = [query, flags = flags.value_or(kWmiReturnImmediately), level = impersonationLevel_](
                   IWbemServices& services) { return answerTo(services, query, flags, level); };
    return std::make_unique<WindowsWmiObjects>(services_.thread(), services_.call(ask));
  }

 private:
  AtHome<IWbemServices> services_;
  DWORD impersonationLevel_;
};

}  // namespace

WindowsWmi::WindowsWmi(WhileSilent whileSilent) : whileSilent_(std::move(whileSilent)) {}

std::unique_ptr<WmiService> WindowsWmi::connect(const std::string& moniker) {
  const std::optional<WmiMoniker> parts = wmiMonikerOf(moniker);
  if (!parts) throw StatementFailed("Invalid syntax: " + moniker, MK_E_SYNTAX);
  if (!thread_) thread_ = std::make_shared<ComThread>(whileSilent_);
  auto services = thread_->call([parts = *parts] { return connectionTo(parts); });
  return std::make_unique<WindowsWmiService>(thread_, std::move(services),
                                             parts->impersonationLevel);
}

}  // namespace veltrin
