// Owners of what drawing needs from the system.
#pragma once

#include <windows.h>
// After windows.h, which it builds on.
#include <uxtheme.h>

#include <memory>
#include <type_traits>

namespace vrn::activex {

struct DeleteGdiObject {
    void operator()(HGDIOBJ object) const noexcept { DeleteObject(object); }
};
struct DeleteContext {
    void operator()(HDC context) const noexcept { DeleteDC(context); }
};
struct CloseTheme {
    void operator()(HTHEME theme) const noexcept { CloseThemeData(theme); }
};
struct DestroyPopup {
    void operator()(HMENU menu) const noexcept { DestroyMenu(menu); }
};

using UniqueFont = std::unique_ptr<std::remove_pointer_t<HFONT>, DeleteGdiObject>;
using UniqueBrush = std::unique_ptr<std::remove_pointer_t<HBRUSH>, DeleteGdiObject>;
using UniquePen = std::unique_ptr<std::remove_pointer_t<HPEN>, DeleteGdiObject>;
using UniqueBitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, DeleteGdiObject>;
using UniqueRegion = std::unique_ptr<std::remove_pointer_t<HRGN>, DeleteGdiObject>;
using UniqueContext = std::unique_ptr<std::remove_pointer_t<HDC>, DeleteContext>;
using UniqueTheme = std::unique_ptr<std::remove_pointer_t<HTHEME>, CloseTheme>;
using UniqueMenu = std::unique_ptr<std::remove_pointer_t<HMENU>, DestroyPopup>;

/// An object selected into a context for as long as this lives.
class Selected {
  public:
    Selected(HDC context, HGDIOBJ object) noexcept : context_(context), before_(SelectObject(context, object)) {}
    ~Selected() { SelectObject(context_, before_); }
    Selected(const Selected&) = delete;
    Selected& operator=(const Selected&) = delete;

  private:
    HDC context_;
    HGDIOBJ before_;
};

/// What a context is set to, put back at the end. Relative to what was saved before: a metafile is played into a context that has
/// saved things of its own.
class SavedContext {
  public:
    explicit SavedContext(HDC context) noexcept : context_(context) { SaveDC(context); }
    ~SavedContext() { RestoreDC(context_, -1); }
    SavedContext(const SavedContext&) = delete;
    SavedContext& operator=(const SavedContext&) = delete;

  private:
    HDC context_;
};

/// The context of a window's client area, to measure with.
class WindowContext {
  public:
    explicit WindowContext(HWND window) noexcept : window_(window), context_(GetDC(window)) {}
    ~WindowContext() { ReleaseDC(window_, context_); }
    WindowContext(const WindowContext&) = delete;
    WindowContext& operator=(const WindowContext&) = delete;
    [[nodiscard]] HDC get() const noexcept { return context_; }

  private:
    HWND window_;
    HDC context_;
};

/// The answer to WM_PAINT. What is drawn goes into memory and appears at once, at the end; short of memory it is drawn
/// directly.
class BufferedPaint {
  public:
    explicit BufferedPaint(HWND window) noexcept : window_(window) {
        const HDC direct = BeginPaint(window, &paint_);
        const RECT& area = paint_.rcPaint;
        memory_.reset(CreateCompatibleDC(direct));
        bitmap_.reset(CreateCompatibleBitmap(direct, area.right - area.left, area.bottom - area.top));
        if (memory_ && bitmap_) {
            before_ = SelectObject(memory_.get(), bitmap_.get());
            SetWindowOrgEx(memory_.get(), area.left, area.top, nullptr);
        } else {
            memory_.reset();
        }
    }
    ~BufferedPaint() {
        if (memory_) {
            const RECT& area = paint_.rcPaint;
            BitBlt(paint_.hdc, area.left, area.top, area.right - area.left, area.bottom - area.top, memory_.get(),
                   area.left, area.top, SRCCOPY);
            SelectObject(memory_.get(), before_);
        }
        EndPaint(window_, &paint_);
    }
    BufferedPaint(const BufferedPaint&) = delete;
    BufferedPaint& operator=(const BufferedPaint&) = delete;

    [[nodiscard]] HDC context() const noexcept { return memory_ ? memory_.get() : paint_.hdc; }

  private:
    HWND window_;
    PAINTSTRUCT paint_{};
    UniqueBitmap bitmap_;
    UniqueContext memory_;
    HGDIOBJ before_ = nullptr;
};

}  // namespace vrn::activex
