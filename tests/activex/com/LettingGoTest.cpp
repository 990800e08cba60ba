// A host that closes and releases the control in the midst of whatever it is called for: nothing of the control may go before the
// control is done, and everything must be gone afterwards.
#include <oleacc.h>

#include <optional>

#include "activex/com/ContainerFixture.h"
#include "activex/com/Sink.h"
#include "support/Documents.h"
#include "text/windows/Wide.h"

namespace vrn::test {

namespace {

using Arguments = NamedObject::Arguments;
using Members = std::vector<std::pair<std::wstring, NamedObject::Member>>;

constexpr int grdMacro = 114;
constexpr int gridTextEditor = 201;

class LettingGoTest : public ContainerTest {
  protected:
    /// Closes the control and lets go of every reference to it, once.
    void letGo() {
        if (armed) {
            armed = false;
            container.whenCalled = nullptr;
            container.remove();
            editor.Reset();
            ++done;
        }
    }
    /// A member of a service that lets go, and then has nothing to say.
    NamedObject::Member lettingGo() {
        return [this](const Arguments&, com::Variant&) { letGo(); };
    }
    /// An instrument service of which one member lets go.
    ComPtr<NamedObject> instrumentThatLetsGoIn(const std::wstring& member) {
        Members members{{member, lettingGo()}};
        for (const auto* const other : {L"UnitInfo", L"UnitPair", L"ObjectNames"}) {
            members.emplace_back(other, [](const Arguments&, com::Variant&) {});
        }
        return make<NamedObject>(std::move(members));
    }
    /// A fresh control in the container, with the small set; shown when a user is to work with it.
    void begin(bool shown) {
        if (editor == nullptr) {
            SetUp();
        }
        loadSmallSet(editor.Get());
        if (shown) {
            ASSERT_EQ(container.verb(OLEIVERB_UIACTIVATE), S_OK);
        }
        armed = true;
    }
    void expectGone(const char* where) {
        EXPECT_FALSE(armed) << where << ": it was not called";
        EXPECT_EQ(editor, nullptr) << where;
        pump();
        EXPECT_EQ(Server::instance().canUnload(), S_OK) << where << ": the control is still there";
    }
    /// What a user types into the grid's first value.
    HWND typeIntoGrid(const wchar_t* text) {
        HWND const grid = child(grdMacro);
        SetFocus(grid);
        SendMessageW(grid, WM_KEYDOWN, VK_F2, 1);
        HWND const box = GetDlgItem(grid, gridTextEditor);
        for (; *text != L'\0'; ++text) {
            SendMessageW(box, WM_CHAR, *text, 1);
        }
        return box;
    }

    bool armed = false;
    int done = 0;
};

/// A timer of the host's, which goes off once, whoever dispatches its message.
class HostTimer {
  public:
    explicit HostTimer(std::function<void()> action) {
        action_ = std::move(action);
        SetTimer(nullptr, 0, 1, goOff);
    }

  private:
    static void CALLBACK goOff(HWND /*window*/, UINT /*message*/, UINT_PTR id, DWORD /*time*/) {
        KillTimer(nullptr, id);
        std::exchange(action_, nullptr)();
    }

    static inline std::function<void()> action_;
};

}  // namespace

TEST_F(LettingGoTest, InsideAServiceThatAClickOfTheUserAsks) {
    for (const auto* const member : {L"ObjectNames", L"UnitInfo"}) {
        begin(true);
        const auto instrument = instrumentThatLetsGoIn(member);
        as<IMethodEditorServices>(editor)->putref_InstrumentService(instrument.Get());
        clickLine(child(lstMethodMacroList), 1);
        expectGone("instrument service");
        EXPECT_EQ(instrument->count(), 1);
    }
}

TEST_F(LettingGoTest, InsideAServiceThatACallAsks) {
    begin(false);
    as<IMethodEditorServices>(editor)->putref_InstrumentService(instrumentThatLetsGoIn(L"UnitInfo").Get());
    auto set = smallSet();
    auto* raw = editor.Get();
    EXPECT_EQ(raw->SetXmlDocuments(set.macros.Get(), set.objects.Get(), set.method.Get(), set.configuration.Get()),
              S_OK);
    expectGone("instrument service");

    begin(false);
    as<IMethodEditorServices>(editor)->putref_SignatureV23(make<NamedObject>(Members{{L"Verify", lettingGo()}}).Get());
    raw = editor.Get();
    EXPECT_EQ(raw->SetXmlDocuments(set.macros.Get(), set.objects.Get(), set.method.Get(), set.configuration.Get()),
              S_OK);
    expectGone("signature component of old methods");

    begin(false);
    as<IMethodEditorServices>(editor)->putref_SignatureV4(make<NamedObject>(Members{{L"Sign", lettingGo()}}).Get());
    raw = editor.Get();
    ComPtr<IDispatch> method;
    EXPECT_EQ(raw->GetMethodXml(&method), S_OK);
    EXPECT_EQ(method, nullptr);
    expectGone("signature component");
}

TEST_F(LettingGoTest, InsideADocumentThatIsHandedOver) {
    begin(false);
    auto set = smallSet();
    const auto foreign = make<NamedObject>(
        Members{{L"hasChildNodes",
                 [&](const Arguments&, com::Variant& result) {
                     letGo();
                     // As a script does that sets its variable to something else.
                     set.method.Reset();
                     result = truth(true);
                 }},
                {L"xml", [](const Arguments&, com::Variant& result) { result = com::Variant("<Macros/>"); }}});
    const ClosingUser user;  // who reads that the method's cycle is not in this catalogue
    auto* const raw = editor.Get();
    EXPECT_EQ(raw->SetXmlDocuments(foreign.Get(), set.objects.Get(), set.method.Get(), set.configuration.Get()), S_OK);
    expectGone("document");
}

TEST_F(LettingGoTest, InsideTheSiteWhenTheUserComes) {
    for (const auto* const call : {"OnUIActivate", "SetActiveObject", "SetBorderSpace null", "OnFocus true"}) {
        begin(false);
        ASSERT_EQ(container.verb(OLEIVERB_SHOW), S_OK);
        container.whenCalled = [&](const std::string& made) {
            if (made == call) {
                letGo();
            }
        };
        SetFocus(child(txtMethodDescription));
        expectGone(call);
    }
}

TEST_F(LettingGoTest, InsideTheReadingOfAnAmbientProperty) {
    begin(true);
    container.whenAsked = [this](DISPID /*property*/) { letGo(); };
    const auto oleControl = as<IOleControl>(editor).Detach();
    oleControl->Release();
    EXPECT_EQ(oleControl->OnAmbientPropertyChange(DISPID_UNKNOWN), S_OK);
    container.whenAsked = nullptr;
    expectGone("ambient property");
}

TEST_F(LettingGoTest, WhileAMessageIsShown) {
    // Led to by a key of the user, and by a call.
    for (const bool byKey : {true, false}) {
        begin(true);
        HWND const box = typeIntoGrid(L"99");
        std::optional<ClosingUser> user;
        const HostTimer timer([&] {
            letGo();
            user.emplace();
        });
        if (byKey) {
            SendMessageW(box, WM_KEYDOWN, VK_RETURN, 1);
        } else {
            auto* const raw = editor.Get();
            VARIANT_BOOL changed = VARIANT_TRUE;
            EXPECT_EQ(raw->get_MethodIsChanged(&changed), S_OK);
        }
        expectGone("message box");
    }
}

TEST_F(LettingGoTest, WhileAReadersRequestIsServed) {
    begin(true);
    ComPtr<IAccessible> grid;
    ASSERT_EQ(AccessibleObjectFromWindow(child(grdMacro), static_cast<DWORD>(OBJID_CLIENT), IID_PPV_ARGS(&grid)), S_OK);
    typeIntoGrid(L"99");
    std::optional<ClosingUser> user;
    const HostTimer timer([&] {
        letGo();
        user.emplace();
    });
    // The value that is being entered is refused before another row is gone to.
    EXPECT_EQ(grid->accSelect(SELFLAG_TAKESELECTION, com::Variant(std::int32_t{1}).get()), S_OK);
    EXPECT_FALSE(armed);
    pump();
    long rows = 0;
    EXPECT_EQ(grid->get_accChildCount(&rows), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(grid->get_accChildCount(nullptr), E_POINTER);
    EXPECT_EQ(Server::instance().canUnload(), S_FALSE) << "the reader's object runs code of the file";
    grid.Reset();
    expectGone("reader");
}

TEST_F(LettingGoTest, OfAWholeThatTheControlIsAPartOf) {
    struct Whole final : TestObject<IUnknown> {
        HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
            return iid == IID_IUnknown ? TestObject::QueryInterface(iid, object) : part->QueryInterface(iid, object);
        }
        ComPtr<IUnknown> part;
    };
    container.remove();
    const auto whole = make<Whole>();
    ASSERT_EQ(Server::instance().factory()->CreateInstance(whole.Get(), IID_PPV_ARGS(&whole->part)), S_OK);
    editor = as<IVRN_MethodEditor>(whole);
    container.place(editor.Get());
    begin(true);
    as<IMethodEditorServices>(editor)->putref_InstrumentService(instrumentThatLetsGoIn(L"ObjectNames").Get());
    ComPtr<Whole> last = whole;
    const_cast<ComPtr<Whole>&>(whole).Reset();
    HWND const list = child(lstMethodMacroList);
    container.whenCalled = nullptr;
    last.Reset();
    clickLine(list, 1);
    expectGone("aggregate");
}

}  // namespace vrn::test
