#include "hosts/activex/control/View.h"

#include <algorithm>
#include <array>

#include "hosts/activex/control/OleObject.h"
#include "hosts/activex/form/Owners.h"
#include "hosts/activex/form/TextPaint.h"

namespace vrn::activex {

namespace {

constexpr int usualDpi = 96;
constexpr int himetricPerInch = 2540;

void requireContent(DWORD aspect, LONG index) {
    if (aspect != DVASPECT_CONTENT) {
        fail(DV_E_DVASPECT, "The control has its content to show and no other aspect.");
    }
    if (index != -1) {
        fail(DV_E_LINDEX, "The control has one part only.");
    }
}

// Drawing in pixels, top down, whatever units the container's context has; a metafile keeps its own.
class InPixels {
  public:
    InPixels(HDC context, const RECTL& bounds)
        : saved_(context), bounds_{bounds.left, bounds.top, bounds.right, bounds.bottom} {
        if (isMetafile(context)) {
            return;
        }
        std::array<POINT, 2> corners{{{bounds.left, bounds.top}, {bounds.right, bounds.bottom}}};
        LPtoDP(context, corners.data(), static_cast<int>(corners.size()));
        bounds_ = {corners[0].x, corners[0].y, corners[1].x, corners[1].y};
        SetMapMode(context, MM_TEXT);
        SetWindowOrgEx(context, 0, 0, nullptr);
        SetViewportOrgEx(context, 0, 0, nullptr);
    }
    [[nodiscard]] const RECT& bounds() const noexcept { return bounds_; }

  private:
    SavedContext saved_;
    RECT bounds_;
};

// Lines of text are as large as the device that the picture is for wants them.
int dpiOf(HDC device) {
    const int dpi = GetDeviceCaps(device, LOGPIXELSY);
    return dpi > 0 ? dpi : usualDpi;
}

// What an inch is in a metafile, nobody knows but by the height that the container has given the control.
int dpiOf(const RECT& bounds, SIZEL extent) {
    const int dpi = extent.cy > 0 ? MulDiv(bounds.bottom - bounds.top, himetricPerInch, extent.cy) : usualDpi;
    return std::max(dpi, 1);
}

}  // namespace

HRESULT View::Draw(DWORD aspect, LONG index, void* /*reserved*/, DVTARGETDEVICE* /*device*/, HDC deviceContext,
                   HDC context, LPCRECTL bounds, LPCRECTL /*metafileBounds*/,
                   BOOL(STDMETHODCALLTYPE* /*goOn*/)(ULONG_PTR), ULONG_PTR /*goOnArgument*/) {
    return control().call(IID_IViewObject2, [&] {
        requireContent(aspect, index);
        requirePointer(bounds, "bounds");
        if (context == nullptr) {
            fail(E_INVALIDARG, "There is no device context to draw into.");
        }
        const InPixels pixels(context, *bounds);
        Canvas canvas{context, pixels.bounds(), 0, deviceContext};
        canvas.dpi = isMetafile(context) ? dpiOf(canvas.bounds, control().ole().extent())
                                         : dpiOf(deviceContext != nullptr ? deviceContext : context);
        control().form().draw(canvas);
        return S_OK;
    });
}

HRESULT View::GetColorSet(DWORD /*aspect*/, LONG /*index*/, void* /*reserved*/, DVTARGETDEVICE* /*device*/,
                          HDC /*deviceContext*/, LOGPALETTE** colors) {
    return control().call(IID_IViewObject2, [&] {
        requirePointer(colors, "colors");
        *colors = nullptr;
        return S_FALSE;  // no colours of its own
    });
}

HRESULT View::Freeze(DWORD /*aspect*/, LONG /*index*/, void* /*reserved*/, DWORD* cookie) {
    return control().call(IID_IViewObject2, [&] {
        requirePointer(cookie, "cookie");
        *cookie = 0;
        return E_NOTIMPL;
    });
}

HRESULT View::Unfreeze(DWORD /*cookie*/) { return E_NOTIMPL; }

HRESULT View::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) {
    return control().call(IID_IViewObject2, [&] {
        const com::ComPtr<IAdviseSink> given(sink);
        const auto old = std::exchange(sink_, given);
        aspects_ = aspects;
        flags_ = flags;
        if ((flags & ADVF_PRIMEFIRST) != 0) {
            tell();
        }
        return S_OK;
    });
}

HRESULT View::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) {
    return control().call(IID_IViewObject2, [&] {
        // Each of them may be left out.
        if (aspects != nullptr) {
            *aspects = aspects_;
        }
        if (flags != nullptr) {
            *flags = flags_;
        }
        if (sink != nullptr) {
            sink_.CopyTo(sink);
        }
        return S_OK;
    });
}

HRESULT View::GetExtent(DWORD aspect, LONG index, DVTARGETDEVICE* /*device*/, LPSIZEL extent) {
    return control().call(IID_IViewObject2, [&] {
        requirePointer(extent, "extent");
        requireContent(aspect, index);
        *extent = control().ole().extent();
        return S_OK;
    });
}

void View::changed() noexcept {
    if (control().form().window() == nullptr) {
        tell();
    }
}

void View::tell() noexcept {
    const auto sink = sink_;
    if (sink == nullptr || (aspects_ & DVASPECT_CONTENT) == 0) {
        return;
    }
    if ((flags_ & ADVF_ONLYONCE) != 0) {
        sink_.Reset();
    }
    sink->OnViewChange(DVASPECT_CONTENT, -1);
}

}  // namespace vrn::activex
