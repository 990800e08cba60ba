#include "hosts/sample/script/ScriptHost.h"

#include <fcntl.h>
#include <io.h>

#include <algorithm>
#include <iostream>
#include <thread>

#include "errors/Error.h"
#include "hosts/sample/script/Dialogs.h"
#include "hosts/sample/script/GridInput.h"
#include "hosts/sample/script/HostWindow.h"
#include "hosts/sample/script/Snapshot.h"
#include "hosts/sample/script/UserInput.h"
#include "hosts/sample/script/XmlText.h"
#include "hosts/script/Protocol.h"
#include "text/windows/Wide.h"

namespace vrn::sample {

namespace {

// What the windows post to themselves may make them post more.
constexpr int quietRounds = 3;
constexpr int mostRounds = 10000;  // some seconds for a box to come or a menu to go

void requireUsable(const ChildWindow& window, const std::string& name) {
    if (!window.enabled() || !window.visible()) {
        script::refuseUse(name, window.visible());
    }
}

void requireEntry(bool there, const std::string& name) {
    if (!there) {
        script::refuseEntry(name);
    }
}

// COM passes the numbers of run-time errors on in a range of their own.
errors::Error withPlainNumber(const errors::Error& error) {
    constexpr std::uint32_t runTimeErrors = 0x800A0000;
    constexpr std::uint32_t range = 0xFFFF0000;
    const auto number = static_cast<std::uint32_t>(error.number());
    const bool runTime = (number & range) == runTimeErrors;
    return {runTime ? static_cast<std::int32_t>(number & ~range) : error.number(), error.description()};
}

// The script's thread. What it asks of the windows is done by theirs.
class Session final : public script::Operations {
  public:
    explicit Session(HostWindow& window) : window_(window) {}

    void raise(const MethodEditorError& error) {
        reportError({static_cast<std::int32_t>(error.lngError), text::fromWide(error.strError),
                     text::fromWide(error.strApplication), text::fromWide(error.strModule),
                     text::fromWide(error.strProcedure), error.intLineNumber});
    }

    void SetXmlDocuments(const std::string& macros, const std::string& objects, const std::string& method,
                         const std::string& config) override {
        call([&](EditorControl& control) {
            control.SetXmlDocuments(documentOf(macros).Get(), documentOf(objects).Get(), documentOf(method).Get(),
                                    documentOf(config).Get());
        });
    }
    std::optional<std::string> GetMethodXml() override {
        std::optional<std::string> text;
        call([&](EditorControl& control) {
            if (const auto method = control.GetMethodXml()) {
                text = textOf(method.Get());
            }
        });
        return text;
    }
    bool MethodIsChanged() override {
        bool changed = false;
        call([&](EditorControl& control) { changed = control.MethodIsChanged(); });
        return changed;
    }
    void MethodIsChanged(bool value) override {
        call([&](EditorControl& control) { control.MethodIsChanged(value); });
    }
    void DisableMethod(bool value) override {
        call([&](EditorControl& control) { control.DisableMethod(value); });
    }
    void DisableDescription(bool value) override {
        call([&](EditorControl& control) { control.DisableDescription(value); });
    }
    void DisableSyringe(bool value) override {
        call([&](EditorControl& control) { control.DisableSyringe(value); });
    }
    std::string AuditTrail() override {
        std::string trail;
        call([&](EditorControl& control) { trail = control.AuditTrail().utf8(); });
        return trail;
    }
    void refreshControls() override {
        call([](EditorControl& control) { control.refreshControls(); });
    }

    void select(const std::string& control, int index) override {
        selectWhere(control,
                    [index](const ListWindow& list) { return index >= 0 && index < list.count() ? index : -1; });
    }
    void select(const std::string& control, const std::string& text) override {
        selectWhere(control, [&text](const ListWindow& list) {
            const auto items = list.items();
            const auto found = std::find(items.begin(), items.end(), text);
            return found == items.end() ? -1 : static_cast<int>(found - items.begin());
        });
    }
    void click(const std::string& control) override {
        goTo(control);
        run([&] {
            const ButtonWindow button(form(), control);
            requireUsable(button, control);
            button.click();
        });
        settle();
    }
    void type(const std::string& text) override {
        const std::string control = "txtMethodDescription";
        goTo(control);
        run([&] {
            const TextWindow box(form(), control);
            requireUsable(box, control);
            box.replaceAll(text);
        });
        settle();
    }
    void edit(int row, const std::string& text, bool commit) override {
        const auto requireRow = [&] {
            const GridWindow window(form());
            requireUsable(window, grid);
            requireEntry(row >= 1 && row < window.rowCount(), grid);
        };
        run(requireRow);
        run([&] { requireEntry(GridWindow(form()).offers(row, text), grid); });
        goTo(grid);
        run(requireRow);
        bool entered = false;
        run([&] {
            const GridWindow window(form());
            requireUsable(window, grid);
            HWND const editor = window.openEditor(row);
            entered = editor != nullptr && GridWindow::enter(editor, text);
            if (editor != nullptr && (commit || !entered)) {
                GridWindow::press(editor, entered ? VK_RETURN : VK_ESCAPE);
            }
        });
        settle();
        requireEntry(entered, grid);
    }
    std::optional<std::vector<std::string>> menu(int row, int position) override {
        run([&] {
            const GridWindow window(form());
            requireEntry(row >= 0 && row < window.rowCount(), grid);
            requireUsable(window, grid);
            window.click(window.placeOf(row, position));
        });
        settle();
        HWND const opened = openMenuWindow(window_.thread());
        if (opened == nullptr) {
            return std::nullopt;
        }
        return menuCaptions(opened);
    }
    void choose(int index) override {
        HWND const opened = openMenuWindow(window_.thread());
        if (opened == nullptr) {
            script::refuseMenu();
        }
        if (index < 0 || index >= static_cast<int>(menuCaptions(opened).size())) {
            closeMenu();
            script::refuseEntry("mnuUserIndex");
        }
        run([&] { chooseInMenu(GridWindow(form()).handle(), index); });
        waitForMenuToGo();
    }
    void closeMenu() override {
        if (openMenuWindow(window_.thread()) != nullptr) {
            run([] { EndMenu(); });
            waitForMenuToGo();
        }
    }
    /// The end of the script: nothing is left that waits for the user.
    void end() noexcept {
        try {
            closeMenu();
            run([this] { window_.close(); });
        } catch (...) {
            // No memory, or a menu that stays: the window takes them along.
            static_cast<void>(0);
        }
    }

    script::Json state() override {
        script::Json result;
        run([&] { result = snapshot(form()); });
        return result;
    }

  private:
    static constexpr const char* grid = "grdMacro";

    [[nodiscard]] HWND form() const { return window_.control().window(); }

    bool meetMessageBox() {
        const auto box = openMessageBox(window_.thread());
        if (box) {
            // Before the answer: the windows go on from there, and may tell of something too.
            reportMessageBox(box->text, box->title, box->flags);
            pressOk(*box);
        }
        return box.has_value();
    }

    /// Whether the windows were in a loop of their own when they did it.
    bool run(const std::function<void()>& work) {
        return window_.perform(work, [this] { meetMessageBox(); });
    }

    void call(const std::function<void(EditorControl&)>& member) {
        run([&] {
            try {
                member(window_.control());
            } catch (const errors::Error& error) {
                throw withPlainNumber(error);
            }
        });
        settle();
    }

    // Until the windows have dealt with all that was posted to them, and nothing waits for the user but a menu.
    void settle() {
        int round = 0;
        for (int quiet = 0; quiet < quietRounds; ++round) {
            const bool nested = run([] {});
            const bool answered = meetMessageBox();
            if (nested && openMenuWindow(window_.thread()) != nullptr) {
                return;
            }
            quiet = answered || nested ? 0 : quiet + 1;
            if (round == mostRounds) {
                throw errors::Error(E_FAIL, "The windows wait for something that is not seen.");
            }
        }
    }

    void waitForMenuToGo() {
        for (int round = 0; openMenuWindow(window_.thread()) != nullptr; ++round) {
            if (round == mostRounds) {
                throw errors::Error(E_FAIL, "The menu does not close.");
            }
            run([] {});
        }
        settle();
    }

    // The user goes to a control, which leaves the one before.
    void goTo(const std::string& control) {
        run([&] {
            const ChildWindow window(form(), control);
            requireUsable(window, control);
            window.takeFocus();
        });
        settle();
    }

    void selectWhere(const std::string& control, const std::function<int(const ListWindow&)>& find) {
        run([&] { requireEntry(find(ListWindow(form(), control)) >= 0, control); });
        goTo(control);
        run([&] {
            const ListWindow list(form(), control);
            const int index = find(list);
            requireEntry(index >= 0, control);
            requireUsable(list, control);
            list.choose(index);
        });
        settle();
    }

    HostWindow& window_;
};

}  // namespace

void runScriptHost(std::istream& in, std::ostream& out) {
    Session* listener = nullptr;
    HostWindow window([&listener](const MethodEditorError& error) {
        if (listener != nullptr) {
            listener->raise(error);
        }
    });
    Session session(window);
    listener = &session;
    std::thread script([&] {
        script::answerLines(session, in, out);
        session.end();
        window.quit();
    });
    window.run();
    script.join();
    listener = nullptr;
}

void runScriptHost() {
    // Lines as they are, without a carriage return of the library's own.
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    runScriptHost(std::cin, std::cout);
}

}  // namespace vrn::sample
