// How controls end: released from where it hurts, and five hundred times over.
#include <windows.h>
// After windows.h, which it builds on.
#include <psapi.h>

#include <algorithm>

#include "activex/com/ContainerFixture.h"
#include "activex/com/Sink.h"
#include "errors/Error.h"

namespace vrn::test {

namespace {

using Members = std::vector<std::pair<std::wstring, NamedObject::Member>>;

class LifeTest : public ContainerTest {};

// What a process holds of the system. Where the system does not count (Wine), new handles tell: it gives out the lowest free
// numbers first.
struct Holdings {
    DWORD handles = 0;
    DWORD gdiObjects = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    DWORD windows = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
    SIZE_T memory = 0;

    Holdings() {
        GetProcessHandleCount(GetCurrentProcess(), &handles);
        if (handles == 0) {
            HANDLE const next = CreateEventW(nullptr, FALSE, FALSE, nullptr);
            handles = static_cast<DWORD>(reinterpret_cast<ULONG_PTR>(next) / 4);
            CloseHandle(next);
        }
        if (gdiObjects == 0) {
            gdiObjects = highestPen();
        }
        if (windows == 0) {
            (void)sample::findInThread(GetCurrentThreadId(), [&](HWND) { return ++windows == 0; });
            for (HWND hidden = nullptr; (hidden = FindWindowExW(HWND_MESSAGE, hidden, nullptr, nullptr)) != nullptr;) {
                ++windows;
            }
        }
        PROCESS_MEMORY_COUNTERS counters{};
        K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof(counters));
        memory = counters.WorkingSetSize;
    }

  private:
    // More of them than there can be gaps between the numbers in use.
    static DWORD highestPen() {
        std::vector<HPEN> pens(3000);
        DWORD highest = 0;
        for (auto& pen : pens) {
            pen = CreatePen(PS_SOLID, 1, 0);
            highest = std::max<DWORD>(highest, LOWORD(reinterpret_cast<ULONG_PTR>(pen)));
        }
        for (HPEN const pen : pens) {
            DeleteObject(pen);
        }
        return highest;
    }
};

// One life: loads, is worked with, gives a method out.
void liveOnce(const std::function<HWND(HWND, int)>& childOf, const std::function<void(HWND, int)>& click) {
    ComPtr<IVRN_MethodEditor> editor;
    com::require(Server::instance().factory()->CreateInstance(nullptr, IID_PPV_ARGS(&editor)));
    Container container;
    container.place(editor.Get());
    loadSmallSet(editor.Get());
    EXPECT_EQ(container.verb(OLEIVERB_UIACTIVATE), S_OK);
    HWND const list = childOf(container.controlWindow(), lstMethodMacroList);
    click(list, 1);
    SendMessageW(childOf(container.controlWindow(), cmdDelete), BM_CLICK, 0, 0);
    EXPECT_EQ(SendMessageW(list, LB_GETCOUNT, 0, 0), 1);
    ComPtr<IDispatch> method;
    EXPECT_EQ(editor->GetMethodXml(&method), S_OK);
    EXPECT_EQ(rootOf(method.Get()), "Method");
}

}  // namespace

TEST_F(LifeTest, AHandlerMayEndTheControlThatAUserIsWorkingWith) {
    bool failing = false;
    const auto silent = [](const NamedObject::Arguments&, com::Variant&) {};
    const auto instrument = make<NamedObject>(
        Members{{L"UnitPair", silent}, {L"ObjectNames", silent}, {L"UnitInfo", [&](const auto&, com::Variant&) {
                                                                      if (failing) {
                                                                          throw errors::Error(5, "No such unit.");
                                                                      }
                                                                  }}});
    as<IMethodEditorServices>(editor)->putref_InstrumentService(instrument.Get());
    loadSmallSet(editor.Get());
    ASSERT_EQ(container.verb(OLEIVERB_UIACTIVATE), S_OK);
    const auto sink = make<Sink>();
    connect(editor.Get(), sink.Get());
    sink->told.clear();
    sink->whenTold = [&] {
        container.remove();
        editor.Reset();
    };
    failing = true;
    // The event comes from the midst of the list's window procedure.
    clickLine(child(lstMethodMacroList), 1);
    ASSERT_FALSE(sink->told.empty());
    EXPECT_EQ(editor, nullptr);
    EXPECT_EQ(sink->count(), 1) << "the control is gone with the end of the list's window procedure";
}

TEST_F(LifeTest, FiveHundredLivesLeaveNothingBehind) {
    const auto live = [] {
        liveOnce(childOf, clickLine);
        pump();  // messages that nobody fetches pile up
    };
    for (int i = 0; i < 20; ++i) {
        live();  // what is made once for all
    }
    const Holdings before;
    for (int i = 0; i < 500; ++i) {
        live();
    }
    const Holdings after;
    constexpr DWORD tolerance = 5;  // what threads of the system do meanwhile
    EXPECT_LE(after.handles, before.handles + tolerance);
    EXPECT_LE(after.gdiObjects, before.gdiObjects + tolerance);
    EXPECT_LE(after.windows, before.windows + tolerance);
    constexpr SIZE_T perLife = 12288;  // of each XML declaration that MSXML makes, Wine keeps some thousand bytes
    EXPECT_LE(after.memory, before.memory + 500 * perLife);
}

}  // namespace vrn::test
