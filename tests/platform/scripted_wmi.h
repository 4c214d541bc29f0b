// SPDX-License-Identifier: GPL-3.0-or-later
// A service of WMI that says what a test wants, in the place of the system's own.
#pragma once

#include <atomic>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <objbase.h>
#include <oleauto.h>
#include <string>
#include <wbemcli.h>
#include <windows.h>

#include "platform/windows/com_thread.h"

namespace veltrin {

// What the service is to say, and what it was asked. Shared by its objects.
struct WmiScript {
  struct Property {
    HRESULT result = S_OK;  // of reading it
    std::function<void(VARIANT&)> fill = [](VARIANT& value) { V_VT(&value) = VT_NULL; };
  };
  using Object = std::map<std::wstring, Property>;

  HRESULT connecting = S_OK;
  HRESULT securing = S_OK;
  HRESULT querying = S_OK;
  HRESULT naming = S_OK;  // the properties of an object
  std::deque<Object> objects;
  HRESULT ending = WBEM_S_FALSE;  // behind the last object
  std::function<void()> beforeNext = [] {};

  std::wstring place;  // that was connected to
  bool toldUser = false;
  LONG connectFlags = -1;
  std::wstring language;
  std::wstring query;
  LONG queryFlags = -1;
  LONG nameFlags = -1;
  ULONG mostObjects = 0;                  // in one step
  std::deque<DWORD> impersonationLevels;  // in the order in which objects were secured
  std::deque<DWORD> authenticationLevels;
  std::deque<DWORD> threads;  // on which calls came

  std::atomic<int> alive{0};  // objects of the service that somebody holds
};

// What all objects of the service have in common.
template <class Interface>
class ScriptedObject : public Interface {
 public:
  explicit ScriptedObject(std::shared_ptr<WmiScript> told) : script(std::move(told)) {
    ++script->alive;
  }
  virtual ~ScriptedObject() { --script->alive; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    *object = interfaceOf(id);
    if (*object == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    script->threads.push_back(GetCurrentThreadId());
    if (left == 0) delete this;
    return left;
  }

 protected:
  virtual void* interfaceOf(REFIID id) {
    return id == IID_IUnknown || id == __uuidof(Interface) ? static_cast<Interface*>(this)
                                                           : nullptr;
  }

  std::shared_ptr<WmiScript> script;

 private:
  std::atomic<ULONG> references_{1};
};

// What an object of another process can be told about security.
class ScriptedSecurity : public IClientSecurity {
 public:
  ScriptedSecurity(IUnknown& owner, WmiScript& script) : owner_(owner), script_(script) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    return owner_.QueryInterface(id, object);
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return owner_.AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return owner_.Release(); }
  HRESULT STDMETHODCALLTYPE QueryBlanket(IUnknown*, DWORD*, DWORD*, OLECHAR**, DWORD*, DWORD*,
                                         void**, DWORD*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE SetBlanket(IUnknown*, DWORD, DWORD, OLECHAR*, DWORD authentication,
                                       DWORD impersonation, void*, DWORD) override {
    script_.authenticationLevels.push_back(authentication);
    script_.impersonationLevels.push_back(impersonation);
    return script_.securing;
  }
  HRESULT STDMETHODCALLTYPE CopyProxy(IUnknown*, IUnknown**) override { return E_NOTIMPL; }

 private:
  IUnknown& owner_;
  WmiScript& script_;
};

class ScriptedClassObject : public ScriptedObject<IWbemClassObject> {
 public:
  ScriptedClassObject(std::shared_ptr<WmiScript> told, WmiScript::Object object)
      : ScriptedObject(std::move(told)), object_(std::move(object)) {}

  HRESULT STDMETHODCALLTYPE GetNames(LPCWSTR, LONG flags, VARIANT*, SAFEARRAY** names) override {
    script->nameFlags = flags;
    if (FAILED(script->naming)) return script->naming;
    *names = SafeArrayCreateVector(VT_BSTR, 0, static_cast<ULONG>(object_.size()));
    LONG index = 0;
    for (const auto& [name, property] : object_) {
      const BSTR text = SysAllocString(name.c_str());
      SafeArrayPutElement(*names, &index, text);
      SysFreeString(text);
      ++index;
    }
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Get(LPCWSTR name, LONG, VARIANT* value, CIMTYPE*, LONG*) override {
    const WmiScript::Property& property = object_.at(name);
    if (SUCCEEDED(property.result)) property.fill(*value);
    return property.result;
  }

  // clang-format off
  HRESULT STDMETHODCALLTYPE GetQualifierSet(IWbemQualifierSet**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Put(LPCWSTR, LONG, VARIANT*, CIMTYPE) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Delete(LPCWSTR) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE BeginEnumeration(LONG) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Next(LONG, BSTR*, VARIANT*, CIMTYPE*, LONG*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE EndEnumeration() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetPropertyQualifierSet(LPCWSTR, IWbemQualifierSet**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Clone(IWbemClassObject**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetObjectText(LONG, BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SpawnDerivedClass(LONG, IWbemClassObject**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SpawnInstance(LONG, IWbemClassObject**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE CompareTo(LONG, IWbemClassObject*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetPropertyOrigin(LPCWSTR, BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE InheritsFrom(LPCWSTR) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetMethod(LPCWSTR, LONG, IWbemClassObject**, IWbemClassObject**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE PutMethod(LPCWSTR, LONG, IWbemClassObject*, IWbemClassObject*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE DeleteMethod(LPCWSTR) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE BeginMethodEnumeration(LONG) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE NextMethod(LONG, BSTR*, IWbemClassObject**, IWbemClassObject**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE EndMethodEnumeration() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetMethodQualifierSet(LPCWSTR, IWbemQualifierSet**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetMethodOrigin(LPCWSTR, BSTR*) override { return E_NOTIMPL; }
  // clang-format on

 private:
  WmiScript::Object object_;
};

class ScriptedAnswer : public ScriptedObject<IEnumWbemClassObject> {
 public:
  using ScriptedObject::ScriptedObject;

  HRESULT STDMETHODCALLTYPE Next(LONG timeout, ULONG most, IWbemClassObject** objects,
                                 ULONG* count) override {
    script->threads.push_back(GetCurrentThreadId());
    script->mostObjects = most;
    script->beforeNext();
    *count = 0;
    if (timeout != static_cast<LONG>(WBEM_INFINITE)) return WBEM_S_TIMEDOUT;
    if (script->objects.empty()) return script->ending;
    *objects = new ScriptedClassObject(script, script->objects.front());
    script->objects.pop_front();
    *count = 1;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Reset() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE NextAsync(ULONG, IWbemObjectSink*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Clone(IEnumWbemClassObject**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Skip(LONG, ULONG) override { return E_NOTIMPL; }

 protected:
  void* interfaceOf(REFIID id) override {
    return id == IID_IClientSecurity ? &security_ : ScriptedObject::interfaceOf(id);
  }

 private:
  ScriptedSecurity security_{*this, *script};
};

class ScriptedServices : public ScriptedObject<IWbemServices> {
 public:
  using ScriptedObject::ScriptedObject;

  HRESULT STDMETHODCALLTYPE ExecQuery(const BSTR language, const BSTR query, LONG flags,
                                      IWbemContext*, IEnumWbemClassObject** answer) override {
    script->threads.push_back(GetCurrentThreadId());
    script->language = language;
    script->query = query;
    script->queryFlags = flags;
    if (FAILED(script->querying)) return script->querying;
    *answer = new ScriptedAnswer(script);
    return S_OK;
  }

  // clang-format off
  HRESULT STDMETHODCALLTYPE OpenNamespace(const BSTR, LONG, IWbemContext*, IWbemServices**, IWbemCallResult**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE CancelAsyncCall(IWbemObjectSink*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE QueryObjectSink(LONG, IWbemObjectSink**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetObject(const BSTR, LONG, IWbemContext*, IWbemClassObject**, IWbemCallResult**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetObjectAsync(const BSTR, LONG, IWbemContext*, IWbemObjectSink*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE PutClass(IWbemClassObject*, LONG, IWbemContext*, IWbemCallResult**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE PutClassAsync(IWbemClassObject*, LONG, IWbemContext*, IWbemObjectSink*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE DeleteClass(const BSTR, LONG, IWbemContext*, IWbemCallResult**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE DeleteClassAsync(const BSTR, LONG, IWbemContext*, IWbemObjectSink*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE CreateClassEnum(const BSTR, LONG, IWbemContext*, IEnumWbemClassObject**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE CreateClassEnumAsync(const BSTR, LONG, IWbemContext*, IWbemObjectSink*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE PutInstance(IWbemClassObject*, LONG, IWbemContext*, IWbemCallResult**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE PutInstanceAsync(IWbemClassObject*, LONG, IWbemContext*, IWbemObjectSink*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE DeleteInstance(const BSTR, LONG, IWbemContext*, IWbemCallResult**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE DeleteInstanceAsync(const BSTR, LONG, IWbemContext*, IWbemObjectSink*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE CreateInstanceEnum(const BSTR, LONG, IWbemContext*, IEnumWbemClassObject**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE CreateInstanceEnumAsync(const BSTR, LONG, IWbemContext*, IWbemObjectSink*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE ExecQueryAsync(const BSTR, const BSTR, LONG, IWbemContext*, IWbemObjectSink*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE ExecNotificationQuery(const BSTR, const BSTR, LONG, IWbemContext*, IEnumWbemClassObject**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE ExecNotificationQueryAsync(const BSTR, const BSTR, LONG, IWbemContext*, IWbemObjectSink*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE ExecMethod(const BSTR, const BSTR, LONG, IWbemContext*, IWbemClassObject*, IWbemClassObject**, IWbemCallResult**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE ExecMethodAsync(const BSTR, const BSTR, LONG, IWbemContext*, IWbemClassObject*, IWbemObjectSink*) override { return E_NOTIMPL; }
  // clang-format on

 protected:
  void* interfaceOf(REFIID id) override {
    return id == IID_IClientSecurity ? &security_ : ScriptedObject::interfaceOf(id);
  }

 private:
  ScriptedSecurity security_{*this, *script};
};

class ScriptedLocator : public ScriptedObject<IWbemLocator> {
 public:
  using ScriptedObject::ScriptedObject;

  HRESULT STDMETHODCALLTYPE ConnectServer(const BSTR place, const BSTR user, const BSTR password,
                                          const BSTR, LONG flags, const BSTR, IWbemContext*,
                                          IWbemServices** services) override {
    script->threads.push_back(GetCurrentThreadId());
    script->place = place;
    script->toldUser = user != nullptr || password != nullptr;
    script->connectFlags = flags;
    if (FAILED(script->connecting)) return script->connecting;
    *services = new ScriptedServices(script);
    return S_OK;
  }
};

// Stands for the system's service as long as it lives.
class ScriptedWmi {
 public:
  ScriptedWmi() {
    home_.call([this] {
      Factory* const factory = new Factory(script);
      registered_ = CoRegisterClassObject(CLSID_WbemLocator, factory, CLSCTX_INPROC_SERVER,
                                          REGCLS_MULTIPLEUSE, &registration_);
      factory->Release();
    });
  }
  ~ScriptedWmi() {
    home_.call([this] { CoRevokeClassObject(registration_); });
  }
  ScriptedWmi(const ScriptedWmi&) = delete;
  ScriptedWmi& operator=(const ScriptedWmi&) = delete;

  HRESULT registered() const { return registered_; }

  const std::shared_ptr<WmiScript> script = std::make_shared<WmiScript>();

 private:
  class Factory : public ScriptedObject<IClassFactory> {
   public:
    explicit Factory(std::shared_ptr<WmiScript> told) : ScriptedObject(std::move(told)) {
      --script->alive;  // it belongs to the test
    }
    ~Factory() override { ++script->alive; }

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID id, void** object) override {
      auto* const locator = new ScriptedLocator(script);
      const HRESULT result = locator->QueryInterface(id, object);
      locator->Release();
      return result;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
  };

  ComThread home_;  // in the apartment whose threads are to find the service
  DWORD registration_ = 0;
  HRESULT registered_ = E_FAIL;
};

}  // namespace veltrin
