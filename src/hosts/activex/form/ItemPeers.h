// Peers of lists: the list of steps and the drop-down lists.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "controls/ItemList.h"
#include "controls/TypeAhead.h"
#include "hosts/activex/form/Peer.h"

namespace vrn::activex {

/// The messages that list boxes and drop-down lists have under different names.
struct ItemMessages {
    UINT insert;
    UINT remove;
    UINT reset;
    UINT setIndex;
    UINT getIndex;
    UINT reserve;
};

/// A list's window holds the model's rows as texts of its own. The engine changes rows by the thousand, one at a time: the
/// window takes them over when the next message arrives, whether somebody asks it or it is to be painted. So nobody ever
/// sees an old state, and filling costs one pass.
class ItemPeer : public Peer {
  public:
    void lookChanged() override;

  protected:
    ItemPeer(Session& session, controls::ItemList& model, ControlId id, const ItemMessages& messages,
             controls::TypeAhead::Rows rows) noexcept
        : Peer(session, model, id), model_(model), messages_(messages), typed_(rows) {}

    void update(controls::Change change) override;
    LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    virtual HFONT font() const noexcept { return look().font; }
    /// The widest row has changed, in pixels.
    virtual void widthChanged(int widest) = 0;

    [[nodiscard]] int windowIndex() const noexcept { return static_cast<int>(send(messages_.getIndex)); }
    /// Whether the window has another row selected than the model.
    [[nodiscard]] bool differs() const noexcept;
    /// The user has chosen a row of the window.
    void choose(int index);
    /// Brings the window in line with the model.
    void catchUp();
    /// The width of a row's text, in pixels; 0 for a row that is not there.
    [[nodiscard]] int rowWidth(int row) const noexcept;
    /// The window now shows what the model holds.
    virtual void caughtUp() {}
    /// The letters that the user has typed mean this row.
    virtual void typedTo(int row) { choose(row); }

  private:
    [[nodiscard]] bool onCharacter(wchar_t character);
    void takeRows();
    void replaceRows(std::size_t from, std::size_t oldCount, std::size_t newCount);
    void measure(std::size_t from, std::size_t oldCount, std::size_t newCount);

    controls::ItemList& model_;
    const ItemMessages& messages_;
    std::vector<std::string> shown_;  // the window's rows
    std::vector<int> widths_;         // of these
    controls::TypeAhead typed_;
    bool rowsStale_ = true;
    bool indexStale_ = true;
    bool catchingUp_ = false;
};

class ListPeer final : public ItemPeer {
  public:
    ListPeer(Session& session, controls::ListBox& model, ControlId id) noexcept;
    void onCommand(int code) override;
    [[nodiscard]] HBRUSH ground(HDC context) const override;
    /// The whole text of a row that is cut.
    [[nodiscard]] Tip tipAt(POINT place) override;
    [[nodiscard]] int rowHeight() const noexcept { return static_cast<int>(send(LB_GETITEMHEIGHT)); }

  protected:
    [[nodiscard]] Making making(HWND parent) const override;
    [[nodiscard]] bool readable() const noexcept override { return true; }
    void setReadOnly(bool readOnly) override;
    LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    HFONT font() const noexcept override { return look().gridFont; }
    void widthChanged(int widest) override;
    void update(controls::Change change) override;
    void caughtUp() override;

  private:
    /// What the user does to a list that can only be read: scrolls it. False for what the system may do with it.
    bool onReading(UINT message, WPARAM wParam);
    void scrollByKey(WPARAM key) const noexcept;
    LRESULT onPress(UINT message, WPARAM wParam, LPARAM lParam);
    /// The row at a place of the client area, `noSelection` where there is none.
    [[nodiscard]] int rowAt(POINT place) const noexcept;
    void show(int row) const noexcept;

    controls::ListBox& model_;
    std::optional<int> topAtPress_;  // the first row in view while a press is being taken
    bool pressed_ = false;           // the left button is down, and the press is done: its report says nothing new
    bool selectedToBeSeen_ = false;  // wherever the user has scrolled to
    bool rowToBeSeen_ = false;       // and the one that the model has asked for
};

class ComboPeer final : public ItemPeer {
  public:
    ComboPeer(Session& session, controls::ComboBox& model, ControlId id) noexcept;
    void onCommand(int code) override;
    /// What is cut of the selected entry, and what the model says about it.
    [[nodiscard]] Tip tipAt(POINT place) override;
    /// The height of the closed list.
    [[nodiscard]] int closedHeight() const noexcept;
    [[nodiscard]] bool dropped() const noexcept { return send(CB_GETDROPPEDSTATE) != FALSE; }

  protected:
    [[nodiscard]] Making making(HWND parent) const override;
    LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void widthChanged(int widest) override;
    void typedTo(int row) override;

  private:
    void paintReadably() const;

    controls::ComboBox& model_;
    bool accepted_ = false;  // the drop-down list was closed by a choice
    bool handled_ = false;   // and the choice is done: the report that follows tells nothing new
};

}  // namespace vrn::activex
