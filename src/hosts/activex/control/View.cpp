#include "hosts/activex/control/View.h"

#include <array>

#include "hosts/activex/control/OleObject.h"

namespace vrn::activex {

namespace {

constexpr int usualDpi = 96;

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
        : context_(context), saved_(SaveDC(context)), bounds_{bounds.left, bounds.top, bounds.right, bounds.bottom} {
        if (GetDeviceCaps(context, TECHNOLOGY) == DT_METAFILE) {
            return;
        }
        std::array<POINT, 2> corners{{{bounds.left, bounds.top}, {bounds.right, bounds.bottom}}};
        LPtoDP(context, corners.data(), static_cast<int>(corners.size()));
        bounds_ = {corners[0].x, corners[0].y, corners[1].x, corners[1].y};
        SetMapMode(context, MM_TEXT);
        SetWindowOrgEx(context, 0, 0, nullptr);
        SetViewportOrgEx(context, 0, 0, nullptr);
    }
    ~InPixels() { RestoreDC(context_, saved_); }
    InPixels(const InPixels&) = delete;
    InPixels& operator=(const InPixels&) = delete;
    [[nodiscard]] const RECT& bounds() const noexcept { return bounds_; }

  private:
    HDC context_;
    int saved_;
    RECT bounds_;
};

// Lines of text are as large as the device that the picture is for wants them.
int dpiOf(HDC device) {
    const int dpi = GetDeviceCaps(device, LOGPIXELSY);
    return dpi > 0 ? dpi : usualDpi;
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
        control().form().draw(context, pixels.bounds(), dpiOf(deviceContext != nullptr ? deviceContext : context));
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
