// How controls end: released from where it hurts, and five hundred times over.
#include "activex/com/ContainerFixture.h"
#include "activex/com/Sink.h"
#include "errors/Error.h"

namespace vrn::test {

namespace {

using Members = std::vector<std::pair<std::wstring, NamedObject::Member>>;

class LifeTest : public ContainerTest {};

// What a process holds of the system.
struct Holdings {
    DWORD handles = 0;
    DWORD gdiObjects = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    DWORD userObjects = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
    Holdings() { GetProcessHandleCount(GetCurrentProcess(), &handles); }
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
    const auto instrument =
        make<NamedObject>(Members{{L"UnitInfo", [&](const auto&, com::Variant&) {
                                       if (failing) {
                                           throw errors::Error(errors::number::invalidProcedureCall, "No such unit.");
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
    pump();
    EXPECT_EQ(sink->count(), 1) << "the control is gone";
}

TEST_F(LifeTest, FiveHundredLivesLeaveNothingBehind) {
    const auto live = [] { liveOnce(childOf, clickLine); };
    for (int i = 0; i < 20; ++i) {
        live();  // what is made once for all
    }
    const Holdings before;
    for (int i = 0; i < 500; ++i) {
        live();
    }
    pump();
    const Holdings after;
    EXPECT_LE(after.handles, before.handles + 5);
    EXPECT_LE(after.gdiObjects, before.gdiObjects + 5);
    EXPECT_LE(after.userObjects, before.userObjects + 5);
    RecordProperty("handles", static_cast<int>(after.handles));
}

}  // namespace vrn::test
