// A report list of the system's, as event log and audit trail show themselves.
#pragma once

#include <windows.h>

#include <initializer_list>
#include <string>

namespace vrn::sample {

class ListView {
  public:
    struct Column {
        const wchar_t* caption;
        int width;  ///< at 96 dpi; of the last column, the least
    };

    /// `title` stands above the list.
    void create(HWND parent, int id, const wchar_t* title, std::initializer_list<Column> columns);
    /// The font stays the caller's.
    void setFont(HFONT font) noexcept;
    [[nodiscard]] HWND window() const noexcept { return window_; }
    /// Moves title and list; the last column takes what is left of the width.
    void moveTo(const RECT& place) const noexcept;
    void show(bool visible) const noexcept;
    void clear() const noexcept;
    void addRow(std::initializer_list<std::wstring> texts) const;
    void showLastRow() const noexcept;

  private:
    HWND title_ = nullptr;
    HWND window_ = nullptr;
    int columns_ = 0;
    int titleHeight_ = 0;
};

}  // namespace vrn::sample
