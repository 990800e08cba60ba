#include "hosts/sample/Site.h"

namespace vrn::sample {

namespace {

constexpr int himetricPerInch = 2540;
constexpr LONG fontUnitsPerPoint = 10000;  // a font's size is a currency: ten-thousandths

// The font of the system's message boxes, which everything else in the window has too.
com::ComPtr<IFontDisp> messageFont() {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0);
    const auto& face = metrics.lfMessageFont;
    HDC const screen = GetDC(nullptr);
    const int points = MulDiv(std::abs(face.lfHeight), 72, GetDeviceCaps(screen, LOGPIXELSY));
    ReleaseDC(nullptr, screen);
    FONTDESC description{};
    description.cbSizeofstruct = sizeof description;
    description.lpstrName = const_cast<LPOLESTR>(face.lfFaceName);
    description.cySize.int64 = LONGLONG{points} * fontUnitsPerPoint;
    description.sWeight = static_cast<SHORT>(face.lfWeight);
    description.sCharset = face.lfCharSet;
    com::ComPtr<IFontDisp> font;
    OleCreateFontIndirect(&description, IID_IFontDisp, reinterpret_cast<void**>(font.GetAddressOf()));
    return font;
}

HRESULT answer(VARIANT* result, bool value) {
    result->vt = VT_BOOL;
    result->boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

HRESULT answer(VARIANT* result, LONG value) {
    result->vt = VT_I4;
    result->lVal = value;
    return S_OK;
}

}  // namespace

HRESULT Frame::QueryInterface(REFIID iid, void** object) {
    if (object == nullptr) {
        return E_POINTER;
    }
    const bool known =
        iid == IID_IUnknown || iid == IID_IOleWindow || iid == IID_IOleInPlaceUIWindow || iid == IID_IOleInPlaceFrame;
    *object = known ? static_cast<IOleInPlaceFrame*>(this) : nullptr;
    if (!known) {
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

ULONG Frame::AddRef() { return static_cast<ULONG>(InterlockedIncrement(&references_)); }

ULONG Frame::Release() {
    const auto left = static_cast<ULONG>(InterlockedDecrement(&references_));
    if (left == 0) {
        delete this;
    }
    return left;
}

HRESULT Frame::GetWindow(HWND* window) {
    *window = container_ == nullptr ? nullptr : container_->frameWindow();
    return *window == nullptr ? E_FAIL : S_OK;
}

HRESULT Frame::SetBorderSpace(LPCBORDERWIDTHS widths) {
    // Null: the control leaves the host's tool bars where they are.
    return widths == nullptr ? S_OK : INPLACE_E_NOTOOLSPACE;
}

HRESULT Frame::SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR /*name*/) {
    if (container_ != nullptr) {
        container_->activeObjectChanged(object);
    }
    return S_OK;
}

HRESULT Frame::SetStatusText(LPCOLESTR text) {
    if (container_ != nullptr) {
        container_->showStatus(text == nullptr ? L"" : text);
    }
    return S_OK;
}

HRESULT Frame::EnableModeless(BOOL enable) {
    if (container_ != nullptr) {
        container_->enableModeless(enable != FALSE);
    }
    return S_OK;
}

Site::Site(Container& container) : container_(&container) { frame_.Attach(new Frame(container)); }

void Site::detach() noexcept {
    container_ = nullptr;
    frame_->detach();
}

HRESULT Site::QueryInterface(REFIID iid, void** object) {
    if (object == nullptr) {
        return E_POINTER;
    }
    // Several interfaces in one object: each pointer must be of the right base, and IUnknown's always of the same one.
    if (iid == IID_IUnknown || iid == IID_IOleClientSite) {
        *object = static_cast<IOleClientSite*>(this);
    } else if (iid == IID_IOleControlSite) {
        *object = static_cast<IOleControlSite*>(this);
    } else if (iid == IID_IOleWindow || iid == IID_IOleInPlaceSite) {
        *object = static_cast<IOleInPlaceSite*>(this);
    } else if (iid == IID_IDispatch) {
        *object = static_cast<IDispatch*>(this);
    } else {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

ULONG Site::AddRef() { return static_cast<ULONG>(InterlockedIncrement(&references_)); }

ULONG Site::Release() {
    const auto left = static_cast<ULONG>(InterlockedDecrement(&references_));
    if (left == 0) {
        delete this;
    }
    return left;
}

HRESULT Site::GetMoniker(DWORD /*assign*/, DWORD /*which*/, IMoniker** moniker) {
    *moniker = nullptr;
    return E_NOTIMPL;
}

HRESULT Site::GetContainer(IOleContainer** container) {
    *container = nullptr;
    return E_NOINTERFACE;
}

HRESULT Site::GetExtendedControl(IDispatch** extended) {
    *extended = nullptr;
    return E_NOTIMPL;
}

HRESULT Site::TransformCoords(POINTL* himetric, POINTF* container, DWORD flags) {
    // The container's coordinates are pixels.
    HDC const screen = GetDC(nullptr);
    const int perInchX = GetDeviceCaps(screen, LOGPIXELSX);
    const int perInchY = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    if ((flags & XFORMCOORDS_HIMETRICTOCONTAINER) != 0) {
        container->x = static_cast<FLOAT>(MulDiv(himetric->x, perInchX, himetricPerInch));
        container->y = static_cast<FLOAT>(MulDiv(himetric->y, perInchY, himetricPerInch));
    } else {
        himetric->x = MulDiv(static_cast<int>(container->x), himetricPerInch, perInchX);
        himetric->y = MulDiv(static_cast<int>(container->y), himetricPerInch, perInchY);
    }
    return S_OK;
}

HRESULT Site::TranslateAccelerator(MSG* message, DWORD /*modifiers*/) {
    return container_ != nullptr && container_->unusedKey(*message) ? S_OK : S_FALSE;
}

HRESULT Site::OnFocus(BOOL gotFocus) {
    if (container_ != nullptr) {
        container_->controlFocusChanged(gotFocus != FALSE);
    }
    return S_OK;
}

HRESULT Site::GetWindow(HWND* window) {
    *window = container_ == nullptr ? nullptr : container_->controlParent();
    return *window == nullptr ? E_FAIL : S_OK;
}

HRESULT Site::CanInPlaceActivate() {
    return container_ != nullptr && container_->controlParent() != nullptr ? S_OK : S_FALSE;
}

HRESULT Site::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, LPRECT place, LPRECT clip,
                               LPOLEINPLACEFRAMEINFO info) {
    *frame = nullptr;
    *document = nullptr;  // there is no document window between the frame and the control
    if (container_ == nullptr) {
        return E_FAIL;
    }
    *place = container_->controlPlace();
    *clip = *place;
    info->fMDIApp = FALSE;
    info->hwndFrame = container_->frameWindow();
    info->haccel = nullptr;
    info->cAccelEntries = 0;
    return frame_.CopyTo(frame);
}

HRESULT Site::GetTypeInfoCount(UINT* count) {
    *count = 0;
    return S_OK;
}

HRESULT Site::GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** info) {
    *info = nullptr;
    return E_NOTIMPL;
}

HRESULT Site::GetIDsOfNames(REFIID /*iid*/, LPOLESTR* /*names*/, UINT /*count*/, LCID /*locale*/, DISPID* /*ids*/) {
    return DISP_E_UNKNOWNNAME;
}

HRESULT Site::Invoke(DISPID member, REFIID /*iid*/, LCID /*locale*/, WORD flags, DISPPARAMS* /*parameters*/,
                     VARIANT* result, EXCEPINFO* /*exception*/, UINT* /*argument*/) {
    if ((flags & DISPATCH_PROPERTYGET) == 0 || result == nullptr) {
        return DISP_E_MEMBERNOTFOUND;
    }
    VariantInit(result);
    switch (member) {
        case DISPID_AMBIENT_USERMODE:  // the program runs: this is no form designer
        case DISPID_AMBIENT_SUPPORTSMNEMONICS:
            return answer(result, true);
        case DISPID_AMBIENT_UIDEAD:
        case DISPID_AMBIENT_SHOWGRABHANDLES:
        case DISPID_AMBIENT_SHOWHATCHING:
        case DISPID_AMBIENT_MESSAGEREFLECT:
        case DISPID_AMBIENT_DISPLAYASDEFAULT:
            return answer(result, false);
        case DISPID_AMBIENT_LOCALEID:
            return answer(result, static_cast<LONG>(GetThreadLocale()));
        case DISPID_AMBIENT_BACKCOLOR:
            return answer(result, static_cast<LONG>(0x80000000U | COLOR_BTNFACE));
        case DISPID_AMBIENT_FORECOLOR:
            return answer(result, static_cast<LONG>(0x80000000U | COLOR_BTNTEXT));
        case DISPID_AMBIENT_FONT:
            if (font_ == nullptr) {
                font_ = messageFont();
            }
            if (font_ == nullptr) {
                return DISP_E_MEMBERNOTFOUND;
            }
            result->vt = VT_DISPATCH;
            return font_.CopyTo(IID_IDispatch, reinterpret_cast<void**>(&result->pdispVal));
        default:
            return DISP_E_MEMBERNOTFOUND;
    }
}

}  // namespace vrn::sample
