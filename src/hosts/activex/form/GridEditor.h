// The place in the grid where the user enters a value: a text box or a drop-down list over the value cell.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "controls/Grid.h"
#include "controls/TypeAhead.h"
#include "hosts/activex/form/Window.h"

namespace vrn::activex {

class GridEditor;

/// What the editor asks of its grid.
class GridEditorSite {
  public:
    virtual ~GridEditorSite() = default;
    /// The user has done with the value: it is to be taken or dropped, and the grid has the focus again.
    virtual void editorDone(bool take) = 0;
    /// The value is to be taken, and the user goes on by so many rows.
    virtual void editorLeft(int rows) = 0;
    /// As `editorDone`, but not before the message loop runs: a system control's code is still at work.
    virtual void editorDoneSoon(bool take) noexcept = 0;
    /// The focus has gone elsewhere: the value is to be taken as soon as the message loop runs, unless it is back by then.
    virtual void editorAbandoned() noexcept = 0;
    /// The user goes on to the next row or, behind the last one, to the next control.
    virtual void editorTabbed(bool backwards) = 0;
    /// The user is about to change the value, wherever the grid was scrolled to.
    virtual void editorUsed() = 0;
};

/// One of the editor's two windows.
class GridEditorWindow final : public Window {
  public:
    GridEditorWindow(Session& session, GridEditor& editor, bool list) noexcept
        : Window(session), editor_(editor), list_(list) {}
    void create(HWND grid);
    void onCommand(int code) override;

  protected:
    LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

  private:
    [[nodiscard]] bool onKey(WPARAM key);

    GridEditor& editor_;
    bool list_;
};

class GridEditor {
  public:
    GridEditor(Session& session, controls::Grid& model, GridEditorSite& site) noexcept;

    void create(HWND grid);
    /// The row that is being edited, 0 when none is.
    [[nodiscard]] int row() const noexcept { return row_; }
    [[nodiscard]] bool isOpen() const noexcept { return row_ != 0; }
    /// The window with the open editor, null when none is open.
    [[nodiscard]] HWND window() const noexcept {
        return !isOpen() ? nullptr : listOpen_ ? list_.handle() : text_.handle();
    }
    [[nodiscard]] Window* windowOf(HWND handle) noexcept;
    /// Opens over the row's value cell, which the user has gone to, and takes the focus.
    void open(int row, const RECT& place);
    void dropDown() const noexcept;
    /// The press of the mouse at work has opened it: another one that makes it a double click is no press in the editor.
    void openedByPress() noexcept;
    void moveTo(const RECT& place) const noexcept;
    /// Takes the window away. The focus goes to the grid when it was here.
    void close() noexcept;
    void lookChanged() const noexcept;
    /// Whether the cell is still what it was when the editor opened.
    [[nodiscard]] bool fits() const;
    /// Whether the edit changes because the user changes it, right now.
    [[nodiscard]] bool typing() const noexcept { return typing_; }

  private:
    friend class GridEditorWindow;
    void fillList(const controls::GridRow& cells);
    void textTyped();
    void itemChosen();
    [[nodiscard]] bool letterTyped(wchar_t character);
    [[nodiscard]] bool secondPress() noexcept;
    [[nodiscard]] GridEditorSite& site() const noexcept { return site_; }

    controls::Grid& model_;
    Session& session_;
    GridEditorSite& site_;
    GridEditorWindow text_;
    GridEditorWindow list_;
    std::vector<std::string> items_;  // of the list window
    controls::TypeAhead typed_;
    std::string valueBefore_;
    std::optional<LONG> pressTime_;  // of the press that has opened it
    POINT pressPlace_{};
    int row_ = 0;
    bool listOpen_ = false;
    bool filling_ = false;
    bool typing_ = false;
};

}  // namespace vrn::activex
