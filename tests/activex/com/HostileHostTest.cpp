// A container that does at every moment what it should not, and memory that is short at every moment.
#include <array>

#include "activex/com/ContainerFixture.h"
#include "activex/com/FailingMemory.h"
#include "activex/com/Sink.h"

namespace vrn::test {

namespace {

using Members = std::vector<std::pair<std::wstring, NamedObject::Member>>;

struct Action {
    const char* name;
    std::function<void()> run;
};

class HostileHostTest : public ContainerTest {
  protected:
    /// The way from the first call to the last, with a user in between.
    void goThrough() const {
        container.verb(OLEIVERB_UIACTIVATE);
        if (container.control == nullptr) {
            return;
        }
        if (HWND const list = child(lstMethodMacroList); list != nullptr) {
            SetFocus(list);
            clickLine(list, 1);
        }
        if (container.control != nullptr) {
            // Not held: what the container lets go of is gone.
            auto* const inPlace = as<IOleInPlaceObject>(container.control).Get();
            inPlace->UIDeactivate();
        }
        if (container.control != nullptr) {
            container.verb(OLEIVERB_HIDE);
        }
        if (container.control != nullptr) {
            container.control->Close(OLECLOSE_NOSAVE);
        }
    }
    [[nodiscard]] std::ptrdiff_t calledTimes(const char* call) const {
        return std::count(container.calls.begin(), container.calls.end(), call);
    }
    void letGo() {
        container.control.Reset();
        container.activeObject.Reset();
        editor.Reset();
    }
    std::vector<Action> actions() {
        return {{"Close", [this] { container.control->Close(OLECLOSE_NOSAVE); }},
                {"SetClientSite null", [this] { container.control->SetClientSite(nullptr); }},
                {"InPlaceDeactivate", [this] { as<IOleInPlaceObject>(container.control)->InPlaceDeactivate(); }},
                {"UIDeactivate", [this] { as<IOleInPlaceObject>(container.control)->UIDeactivate(); }},
                {"hide", [this] { container.verb(OLEIVERB_HIDE); }},
                {"activate", [this] { container.verb(OLEIVERB_UIACTIVATE); }},
                {"no site, no place",
                 [this] { container.control->DoVerb(OLEIVERB_SHOW, nullptr, nullptr, 0, nullptr, nullptr); }},
                {"lose the window", [this] { container.loseWindow(); }},
                {"load", [this] { loadSmallSet(editor.Get()); }},
                {"read ambient properties",
                 [this] { as<IOleControl>(container.control)->OnAmbientPropertyChange(DISPID_UNKNOWN); }},
                {"let go", [this] { letGo(); }}};
    }
};

}  // namespace

TEST_F(HostileHostTest, MayDoAnythingInAnyCall) {
    constexpr std::array moments{"CanInPlaceActivate", "OnInPlaceActivate",   "GetWindowContext",
                                 "ShowObject",         "OnUIActivate",        "OnFocus true",
                                 "SetActiveObject",    "SetBorderSpace null", "SetActiveObject null",
                                 "OnUIDeactivate",     "OnInPlaceDeactivate"};
    for (const auto* const moment : moments) {
        for (const auto& action : actions()) {
            SCOPED_TRACE(std::string(action.name) + " in " + moment);
            loadSmallSet(editor.Get());
            container.calls.clear();
            bool acted = false;
            container.whenCalled = [&](const std::string& call) {
                if (call == moment && container.control != nullptr) {
                    container.whenCalled = nullptr;
                    acted = true;
                    action.run();
                }
            };
            goThrough();
            container.whenCalled = nullptr;
            EXPECT_TRUE(acted);
            container.remove();
            editor.Reset();
            EXPECT_EQ(calledTimes("OnInPlaceActivate"), calledTimes("OnInPlaceDeactivate"));
            EXPECT_EQ(calledTimes("OnUIActivate"), calledTimes("OnUIDeactivate"));
            pump();
            EXPECT_EQ(Server::instance().canUnload(), S_OK);
            SetUp();
        }
    }
}

TEST_F(HostileHostTest, SurvivesWhenOneAllocationFails) {
    container.remove();
    editor.Reset();
    const ClosingUser user;
    FailingMemory memory(Server::instance().module());
    bool failed = true;
    // Every one at first, where objects are made; then further and further apart.
    for (unsigned long nth = 1; failed; nth += 1 + nth / 30) {
        SCOPED_TRACE(nth);
        const SmallSet set = smallSet();
        memory.failOnce(nth);
        ComPtr<IVRN_MethodEditor> made;
        if (SUCCEEDED(Server::instance().factory()->CreateInstance(nullptr, IID_PPV_ARGS(&made)))) {
            as<IMethodEditorServices>(made)->putref_SignatureV23(trustingSignature().Get());
            container.place(made.Get());
            made->SetXmlDocuments(set.macros.Get(), set.objects.Get(), set.method.Get(), set.configuration.Get());
            goThrough();
            VARIANT_BOOL changed = VARIANT_FALSE;
            made->get_MethodIsChanged(&changed);
            container.remove();
        }
        made.Reset();
        failed = memory.hasFailed();
        memory.failNever();
        pump();
        ASSERT_EQ(Server::instance().canUnload(), S_OK);
    }
}

}  // namespace vrn::test
