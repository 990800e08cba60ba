// The control's DLL as a program meets it: loaded by path, its class factory asked for objects.
#pragma once

#include <gmock/gmock.h>
#include <windows.h>
// After windows.h, which they build on.
#include <ole2.h>
#include <olectl.h>

#include <atomic>
#include <string>
#include <thread>

#include "activex/com/TestObject.h"
#include "com/Com.h"
#include "errors/Error.h"
#include "vrnMethodEditor.h"

namespace vrn::test {

using com::ComPtr;

/// What the thread's error information says, taken away from it.
struct ErrorInformation {
    bool present = false;
    GUID interfaceId = GUID_NULL;
    std::string description;
    std::string source;
};
ErrorInformation takeErrorInformation();

/// The functions of the loaded DLL.
class Server {
  public:
    static Server& instance();

    [[nodiscard]] ComPtr<IClassFactory> factory() const;
    [[nodiscard]] HRESULT canUnload() const { return canUnload_(); }
    [[nodiscard]] const std::wstring& path() const noexcept { return path_; }
    [[nodiscard]] HMODULE module() const noexcept { return module_; }

  private:
    Server();
    std::wstring path_;
    HMODULE module_ = nullptr;
    LPFNGETCLASSOBJECT getClassObject_ = nullptr;
    LPFNCANUNLOADNOW canUnload_ = nullptr;
};

/// Every test leaves nothing behind in the DLL.
class ControlTest : public ::testing::Test {
  protected:
    void TearDown() override {
        pump();
        EXPECT_EQ(Server::instance().canUnload(), S_OK) << "an object of the control was left";
    }

    template <typename Interface = IVRN_MethodEditor>
    static ComPtr<Interface> create() {
        ComPtr<Interface> made;
        EXPECT_EQ(Server::instance().factory()->CreateInstance(nullptr, IID_PPV_ARGS(&made)), S_OK);
        return made;
    }
    template <typename Interface, typename Object>
    static ComPtr<Interface> as(const ComPtr<Object>& object) {
        ComPtr<Interface> found;
        EXPECT_EQ(object.As(&found), S_OK);
        return found;
    }
    /// Dispatches what waits in the thread's queue.
    static void pump();
};

/// A user who closes every message box of the control, for as long as this lives.
class ClosingUser {
  public:
    ClosingUser();
    ~ClosingUser();
    ClosingUser(const ClosingUser&) = delete;
    ClosingUser& operator=(const ClosingUser&) = delete;

  private:
    std::atomic<bool> over_ = false;
    std::thread thread_;
};

/// A document of the system's XML library.
ComPtr<IDispatch> document(const std::wstring& text, const wchar_t* progId = L"Msxml2.DOMDocument.6.0");
/// The text of such a document: its property `xml`.
std::wstring textOf(const ComPtr<IDispatch>& document);
/// The root element's name of such a document, "" for none.
std::string rootOf(IDispatch* document);
/// A signature component that finds every old method intact, so that one without a signature loads and no box opens.
ComPtr<IDispatch> trustingSignature();

/// A set of documents with one macro WASH and a method of two steps.
struct SmallSet {
    ComPtr<IDispatch> macros;
    ComPtr<IDispatch> objects;
    ComPtr<IDispatch> method;
    ComPtr<IDispatch> configuration;
};
SmallSet smallSet();
/// The method as a host gets it back, null for none.
ComPtr<IDispatch> built(IVRN_MethodEditor* editor);
/// Loads it with a signature component that trusts.
void loadSmallSet(IVRN_MethodEditor* editor);

}  // namespace vrn::test
