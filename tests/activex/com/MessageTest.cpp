// The control's message boxes: whose they are, and what can be used while one is open.
#include "activex/com/ContainerFixture.h"
#include "support/Documents.h"
#include "text/windows/Wide.h"

namespace vrn::test {

namespace {

// What is seen while a message box of the control is open, by a timer of the host's.
struct Seen {
    HWND owner = nullptr;
    bool ownerEnabled = true;
    bool otherEnabled = false;
    HWND container = nullptr;
    HWND other = nullptr;
    std::function<void(HWND)> act;
};
Seen* watched = nullptr;

void CALLBACK look(HWND /*window*/, UINT /*message*/, UINT_PTR id, DWORD /*time*/) {
    HWND const box = FindWindowW(L"#32770", L"Method Editor Component - Method Editor Control");
    if (box == nullptr) {
        return;
    }
    KillTimer(nullptr, id);
    auto& seen = *std::exchange(watched, nullptr);
    seen.owner = GetWindow(box, GW_OWNER);
    seen.ownerEnabled = IsWindowEnabled(seen.container) != FALSE;
    seen.otherEnabled = IsWindowEnabled(seen.other) != FALSE;
    if (seen.act) {
        seen.act(box);
    } else {
        PostMessageW(box, WM_COMMAND, IDOK, 0);
    }
}

}  // namespace

class MessageTest : public ContainerTest {
  protected:
    void SetUp() override {
        ContainerTest::SetUp();
        other = CreateWindowExW(0, L"Static", L"another", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 90, 90, nullptr,
                                nullptr, nullptr, nullptr);
    }
    void TearDown() override {
        DestroyWindow(other);
        ContainerTest::TearDown();
    }
    /// Leads to one message for the user, and reports what was seen while it was open.
    Seen show(std::function<void(HWND)> act = {}) {
        Seen seen;
        seen.container = container.window;
        seen.other = other;
        seen.act = std::move(act);
        watched = &seen;
        SetTimer(nullptr, 0, 5, look);
        const auto set = smallSet();
        const auto later = document(text::toWide(methodText({"WASH(5)"})));
        EXPECT_EQ(editor->SetXmlDocuments(set.macros.Get(), set.objects.Get(), later.Get(), set.configuration.Get()),
                  S_OK);
        EXPECT_EQ(watched, nullptr) << "no message was shown";
        return seen;
    }
    HWND other = nullptr;
};

TEST_F(MessageTest, BelongsToTheContainersWindowAndDisablesNoOther) {
    for (const bool shown : {false, true}) {
        ASSERT_EQ(container.verb(shown ? OLEIVERB_UIACTIVATE : OLEIVERB_DISCARDUNDOSTATE), S_OK);
        container.calls.clear();
        const auto seen = show();
        EXPECT_EQ(seen.owner, container.window);
        EXPECT_FALSE(seen.ownerEnabled);
        EXPECT_TRUE(seen.otherEnabled);
        EXPECT_TRUE(IsWindowEnabled(container.window));
        std::vector<std::string> modeless;
        std::copy_if(container.calls.begin(), container.calls.end(), std::back_inserter(modeless),
                     [](const std::string& call) { return call.starts_with("EnableModeless"); });
        EXPECT_EQ(modeless, shown ? std::vector<std::string>({"EnableModeless false", "EnableModeless true"})
                                  : std::vector<std::string>());
    }
}

TEST_F(MessageTest, IsModalToTheThreadWithoutAContainer) {
    container.remove();
    const auto seen = show();
    EXPECT_EQ(seen.owner, nullptr);
    EXPECT_FALSE(seen.otherEnabled);
}

TEST_F(MessageTest, GoesWithTheContainersWindowAndIsNotShownAgain) {
    ASSERT_EQ(container.verb(OLEIVERB_UIACTIVATE), S_OK);
    const auto seen = show([this](HWND /*box*/) { container.loseWindow(); });
    EXPECT_NE(seen.owner, container.window) << "that one is new";
    EXPECT_EQ(FindWindowW(L"#32770", nullptr), nullptr);
    ComPtr<IDispatch> built;
    EXPECT_EQ(editor->GetMethodXml(&built), S_OK);
}

}  // namespace vrn::test
