// Calls from threads that the control does not belong to: refused when they come directly, carried over when they come through
// COM. The control is registered here, since carrying calls over takes its type library.
#include <atomic>
#include <thread>

#include "activex/com/Registered.h"
#include "activex/com/Sink.h"

namespace vrn::test {

namespace {

class ThreadsTest : public ControlTest {
  protected:
    static void SetUpTestSuite() { registerServer(); }
    static void TearDownTestSuite() { unregisterServer(); }

    // Runs on a thread of its own while this one answers the calls that come over to it.
    template <typename Body>
    static void onThread(DWORD apartment, Body body) {
        std::atomic<bool> over = false;
        std::thread thread([&] {
            CoInitializeEx(nullptr, apartment);
            body();
            CoUninitialize();
            over = true;
        });
        while (!over) {
            pump();
            Sleep(1);
        }
        thread.join();
    }
};

}  // namespace

TEST_F(ThreadsTest, ADirectCallFromAnotherThreadIsRefused) {
    const auto control = create();
    const auto object = as<IOleObject>(control);
    onThread(COINIT_APARTMENTTHREADED, [&] {
        EXPECT_EQ(control->refreshControls(), RPC_E_WRONG_THREAD);
        EXPECT_EQ(takeErrorInformation().description, "The control was called on a thread that it does not belong to.");
        EXPECT_EQ(control->SetXmlDocuments(nullptr, nullptr, nullptr, nullptr), RPC_E_WRONG_THREAD);
        EXPECT_EQ(object->DoVerb(OLEIVERB_SHOW, nullptr, nullptr, 0, nullptr, nullptr), RPC_E_WRONG_THREAD);
    });
    EXPECT_EQ(control->refreshControls(), S_OK);
}

TEST_F(ThreadsTest, AMarshalledCallArrives) {
    for (const DWORD apartment : {COINIT_APARTMENTTHREADED, COINIT_MULTITHREADED}) {
        const auto control = create();
        const auto sink = make<Sink>();
        DWORD told = 0;
        sink->whenTold = [&] { told = GetCurrentThreadId(); };
        connect(control.Get(), sink.Get());
        ComPtr<IGlobalInterfaceTable> table;
        ASSERT_EQ(CoCreateInstance(CLSID_StdGlobalInterfaceTable, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&table)),
                  S_OK);
        DWORD cookie = 0;
        ASSERT_EQ(table->RegisterInterfaceInGlobal(control.Get(), IID_IVRN_MethodEditor, &cookie), S_OK);
        onThread(apartment, [&] {
            ComPtr<IVRN_MethodEditor> proxy;
            ASSERT_EQ(table->GetInterfaceFromGlobal(cookie, IID_IVRN_MethodEditor, &proxy), S_OK);
            EXPECT_NE(proxy.Get(), control.Get());
            EXPECT_EQ(proxy->SetXmlDocuments(nullptr, nullptr, nullptr, nullptr), S_OK);
            VARIANT_BOOL changed = VARIANT_TRUE;
            EXPECT_EQ(proxy->get_MethodIsChanged(&changed), S_OK);
            EXPECT_EQ(changed, VARIANT_FALSE);
        });
        EXPECT_EQ(told, GetCurrentThreadId()) << "the event is raised where the control lives";
        EXPECT_EQ(table->RevokeInterfaceFromGlobal(cookie), S_OK);
    }
}

}  // namespace vrn::test
