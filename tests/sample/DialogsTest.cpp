// A script's way with message boxes and menus, on the system's own.
#include "hosts/sample/script/Dialogs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <future>
#include <optional>
#include <thread>

#include "activex/support/ControlFile.h"
#include "com/Dispatch.h"
#include "errors/Error.h"
#include "hosts/sample/Panes.h"
#include "hosts/sample/script/XmlText.h"

namespace vrn::test {
namespace {

// Some seconds at most.
template <typename Found>
Found waitFor(const std::function<Found()>& look) {
    Found found{};
    for (int i = 0; i < 1000 && !(found = look()); ++i) {
        Sleep(5);
    }
    return found;
}

// A thread that shows something, as the windows' thread does.
class ShowingThread {
  public:
    explicit ShowingThread(std::function<int()> show)
        : thread_([this, show = std::move(show)] {
              id_.set_value(GetCurrentThreadId());
              result_ = show();
          }) {}
    [[nodiscard]] DWORD id() { return id_.get_future().get(); }
    int result() {
        thread_.join();
        return result_;
    }

  private:
    std::promise<DWORD> id_;
    int result_ = 0;
    std::thread thread_;
};

TEST(MessageBoxes, AreReadAndAnswered) {
    const std::pair<UINT, int> kinds[] = {{MB_ICONERROR, 16}, {MB_ICONINFORMATION, 64}};
    for (const auto& [icon, flags] : kinds) {
        ShowingThread showing([icon = icon] { return MessageBoxW(nullptr, L"Text\r\n\u00E9", L"Title", icon); });
        const DWORD thread = showing.id();
        const auto texts =
            waitFor<std::optional<sample::MessageBoxTexts>>([thread] { return sample::openMessageBox(thread); });
        ASSERT_TRUE(texts.has_value());
        EXPECT_EQ(texts->text, "Text\r\n\xC3\xA9");
        EXPECT_EQ(texts->title, "Title");
        EXPECT_EQ(texts->flags, flags);
        sample::pressOk(*texts);
        EXPECT_EQ(sample::openMessageBox(thread), std::nullopt) << "met twice";
        EXPECT_EQ(showing.result(), IDOK);
    }
}

TEST(Menus, AreReadAndChosenFrom) {
    HWND owner = nullptr;
    ShowingThread showing([&owner] {
        owner =
            CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW, 0, 0, 100, 100, nullptr, nullptr, nullptr, nullptr);
        HMENU const menu = CreatePopupMenu();
        AppendMenuW(menu, MF_STRING, 11, L"first");
        AppendMenuW(menu, MF_STRING, 12, L"a && b");
        AppendMenuW(menu, MF_STRING, 13, L"third");
        const int chosen = TrackPopupMenuEx(menu, TPM_RETURNCMD | TPM_NONOTIFY, 10, 10, owner, nullptr);
        DestroyMenu(menu);
        DestroyWindow(owner);
        return chosen;
    });
    const DWORD thread = showing.id();
    EXPECT_EQ(sample::openMessageBox(thread), std::nullopt);
    HWND const menu = waitFor<HWND>([thread] { return sample::openMenuWindow(thread); });
    ASSERT_NE(menu, nullptr);
    EXPECT_THAT(sample::menuCaptions(menu), testing::ElementsAre("first", "a & b", "third"));
    sample::chooseInMenu(owner, 1);
    EXPECT_EQ(showing.result(), 12);
    EXPECT_EQ(sample::openMenuWindow(thread), nullptr);
}

TEST(XmlTexts, AreDocumentsWhetherWellFormedOrNot) {
    const Apartment apartment;
    EXPECT_EQ(sample::documentOf(""), nullptr);
    for (const std::string text : {"<a>", "   ", "<!DOCTYPE a [<!ENTITY b \"c\">]><a>&b;</a>"}) {
        const com::Object document(sample::documentOf(text));
        ASSERT_TRUE(document.has(L"hasChildNodes") && document.has(L"xml")) << text;
        EXPECT_TRUE(com::truthOf(document.read(L"hasChildNodes")));
        EXPECT_EQ(com::textOf(document.read(L"xml")), text);
    }
    const auto document = sample::documentOf("<a b=\"1\"><c/>x</a>");
    EXPECT_EQ(sample::textOf(document.Get()), "<a b=\"1\"><c/>x</a>");
}

TEST(PanesOfTheWindow, ShareTheAreaWithoutOverlap) {
    sample::Panes panes;
    const RECT area{0, 30, 1000, 730};
    panes.arrange(area);
    const auto atSplitter = [&] { return POINT{panes.control().right + 1, panes.control().top + 10}; };
    EXPECT_EQ(panes.splitterAt(atSplitter()), sample::Splitter::Audit);
    EXPECT_EQ(panes.splitterAt({panes.control().left + 10, panes.control().bottom + 1}), sample::Splitter::Events);
    EXPECT_EQ(panes.splitterAt({panes.control().left + 10, panes.control().top + 10}), sample::Splitter::None);
    // However far it is dragged, every pane keeps a place.
    for (const LONG x : {-500L, 500L, 5000L}) {
        panes.drag(sample::Splitter::Audit, {x, 100});
        EXPECT_LT(panes.control().left, panes.control().right);
        EXPECT_LT(panes.control().right, panes.audit().left);
        EXPECT_LT(panes.audit().left, panes.audit().right);
        EXPECT_EQ(panes.audit().right, area.right);
    }
    panes.showAudit = false;
    panes.showEvents = false;
    panes.arrange(area);
    EXPECT_TRUE(EqualRect(&panes.control(), &area));
}

}  // namespace
}  // namespace vrn::test
