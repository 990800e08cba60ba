#include "hosts/activex/form/GridAccessible.h"

#include "com/Com.h"
#include "hosts/activex/form/GridWindow.h"
#include "text/windows/Wide.h"

namespace vrn::activex {

namespace {

HRESULT giveNumber(long number, VARIANT* out) noexcept {
    VariantInit(out);
    out->vt = VT_I4;
    out->lVal = number;
    return S_OK;
}

HRESULT nothing(BSTR* out) noexcept {
    *out = nullptr;
    return S_FALSE;
}

}  // namespace

HRESULT GridAccessible::QueryInterface(REFIID id, void** object) {
    if (object == nullptr) {
        return E_POINTER;
    }
    if (id == IID_IUnknown || id == IID_IDispatch || id == IID_IAccessible) {
        *object = static_cast<IAccessible*>(this);
        AddRef();
        return S_OK;
    }
    *object = nullptr;
    return E_NOINTERFACE;
}

ULONG GridAccessible::Release() {
    const ULONG left = --references_;
    if (left == 0) {
        delete this;
    }
    return left;
}

// Clients of IAccessible call its table; there is no type information behind it.
HRESULT GridAccessible::GetTypeInfoCount(UINT* count) {
    *count = 0;
    return S_OK;
}
HRESULT GridAccessible::GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** info) {
    *info = nullptr;
    return E_NOTIMPL;
}
HRESULT GridAccessible::GetIDsOfNames(REFIID /*id*/, LPOLESTR* /*names*/, UINT /*count*/, LCID /*locale*/,
                                      DISPID* /*ids*/) {
    return E_NOTIMPL;
}
HRESULT GridAccessible::Invoke(DISPID /*member*/, REFIID /*id*/, LCID /*locale*/, WORD /*flags*/,
                               DISPPARAMS* /*parameters*/, VARIANT* /*result*/, EXCEPINFO* /*exception*/,
                               UINT* /*argument*/) {
    return E_NOTIMPL;
}

bool GridAccessible::connected() const noexcept { return grid_ != nullptr && grid_->usable(); }

HRESULT GridAccessible::give(int row, int column, BSTR* out) const noexcept {
    try {
        const auto text = row == 0 ? std::string("Parameters") : grid_->model().cellText(row, column);
        *out = com::Bstr(text).release();
        return S_OK;
    } catch (...) {
        *out = nullptr;
        return E_OUTOFMEMORY;
    }
}

HRESULT GridAccessible::rowOf(const VARIANT& child, int& row) const noexcept {
    if (!connected()) {
        return CO_E_OBJNOTCONNECTED;
    }
    if (child.vt != VT_I4 || child.lVal < 0 || child.lVal >= grid_->model().rowCount()) {
        return E_INVALIDARG;
    }
    row = child.lVal;
    return S_OK;
}

bool GridAccessible::gridHasFocus() const noexcept {
    const HWND focus = GetFocus();
    return focus != nullptr && (focus == grid_->handle() || focus == grid_->editor().window());
}

HRESULT GridAccessible::get_accParent(IDispatch** parent) {
    *parent = nullptr;
    if (!connected()) {
        return CO_E_OBJNOTCONNECTED;
    }
    return AccessibleObjectFromWindow(grid_->handle(), static_cast<DWORD>(OBJID_WINDOW), IID_IDispatch,
                                      reinterpret_cast<void**>(parent));
}

HRESULT GridAccessible::get_accChildCount(long* count) {
    *count = 0;
    if (!connected()) {
        return CO_E_OBJNOTCONNECTED;
    }
    *count = grid_->model().rowCount() - 1;
    return S_OK;
}

HRESULT GridAccessible::get_accChild(VARIANT child, IDispatch** object) {
    *object = nullptr;
    int row = 0;
    const HRESULT result = rowOf(child, row);
    return FAILED(result) ? result : S_FALSE;  // a simple element: it has no object of its own
}

HRESULT GridAccessible::get_accName(VARIANT child, BSTR* name) {
    int row = 0;
    if (const HRESULT result = rowOf(child, row); FAILED(result)) {
        *name = nullptr;
        return result;
    }
    return give(row, 0, name);
}

HRESULT GridAccessible::get_accValue(VARIANT child, BSTR* value) {
    int row = 0;
    *value = nullptr;
    if (const HRESULT result = rowOf(child, row); FAILED(result)) {
        return result;
    }
    return row == 0 ? DISP_E_MEMBERNOTFOUND : give(row, 1, value);
}

HRESULT GridAccessible::get_accDescription(VARIANT /*child*/, BSTR* description) { return nothing(description); }

HRESULT GridAccessible::get_accRole(VARIANT child, VARIANT* role) {
    int row = 0;
    if (const HRESULT result = rowOf(child, row); FAILED(result)) {
        return result;
    }
    return giveNumber(row == 0 ? ROLE_SYSTEM_TABLE : ROLE_SYSTEM_CELL, role);
}

HRESULT GridAccessible::get_accState(VARIANT child, VARIANT* state) {
    int row = 0;
    if (const HRESULT result = rowOf(child, row); FAILED(result)) {
        return result;
    }
    const auto& model = grid_->model();
    long states = grid_->takesFocus() ? STATE_SYSTEM_FOCUSABLE : 0;
    if (!model.enabled()) {
        states |= STATE_SYSTEM_UNAVAILABLE | STATE_SYSTEM_READONLY;
    }
    const bool current = row == 0 || row == grid_->shownRow();
    if (current && gridHasFocus()) {
        states |= STATE_SYSTEM_FOCUSED;
    }
    if (row != 0) {
        states |= STATE_SYSTEM_SELECTABLE | (current ? STATE_SYSTEM_SELECTED : 0);
        const auto& geometry = grid_->geometry();
        if (row < geometry.top || geometry.row(row).top >= geometry.height) {
            states |= STATE_SYSTEM_OFFSCREEN | STATE_SYSTEM_INVISIBLE;
        }
    }
    return giveNumber(states, state);
}

HRESULT GridAccessible::get_accHelp(VARIANT /*child*/, BSTR* help) { return nothing(help); }
HRESULT GridAccessible::get_accHelpTopic(BSTR* file, VARIANT /*child*/, long* topic) {
    *topic = -1;
    return nothing(file);
}
HRESULT GridAccessible::get_accKeyboardShortcut(VARIANT /*child*/, BSTR* shortcut) { return nothing(shortcut); }

HRESULT GridAccessible::get_accFocus(VARIANT* child) {
    VariantInit(child);
    if (!connected()) {
        return CO_E_OBJNOTCONNECTED;
    }
    return gridHasFocus() ? giveNumber(grid_->shownRow(), child) : S_FALSE;
}

HRESULT GridAccessible::get_accSelection(VARIANT* children) {
    VariantInit(children);
    if (!connected()) {
        return CO_E_OBJNOTCONNECTED;
    }
    const int row = grid_->shownRow();
    return row > 0 ? giveNumber(row, children) : S_FALSE;
}

HRESULT GridAccessible::get_accDefaultAction(VARIANT /*child*/, BSTR* action) { return nothing(action); }

HRESULT GridAccessible::accSelect(long flags, VARIANT child) {
    int row = 0;
    if (const HRESULT result = rowOf(child, row); FAILED(result)) {
        return result;
    }
    try {
        if ((flags & SELFLAG_TAKEFOCUS) != 0) {
            SetFocus(grid_->handle());
        }
        if (row > 0 && connected()) {
            grid_->goTo(row);
        }
        return S_OK;
    } catch (...) {
        return E_FAIL;
    }
}

HRESULT GridAccessible::accLocation(long* left, long* top, long* width, long* height, VARIANT child) {
    *left = *top = *width = *height = 0;
    int row = 0;
    if (const HRESULT result = rowOf(child, row); FAILED(result)) {
        return result;
    }
    RECT place{};
    if (row == 0) {
        GetClientRect(grid_->handle(), &place);
    } else {
        place = grid_->geometry().value(row);
    }
    MapWindowPoints(grid_->handle(), nullptr, reinterpret_cast<POINT*>(&place), 2);
    *left = place.left;
    *top = place.top;
    *width = place.right - place.left;
    *height = place.bottom - place.top;
    return S_OK;
}

HRESULT GridAccessible::accNavigate(long direction, VARIANT start, VARIANT* end) {
    VariantInit(end);
    int row = 0;
    if (const HRESULT result = rowOf(start, row); FAILED(result)) {
        return result;
    }
    const int last = grid_->model().rowCount() - 1;
    int to = 0;
    if (row == 0) {
        to = direction == NAVDIR_FIRSTCHILD ? 1 : direction == NAVDIR_LASTCHILD ? last : 0;
    } else if (direction == NAVDIR_NEXT || direction == NAVDIR_DOWN) {
        to = row + 1;
    } else if (direction == NAVDIR_PREVIOUS || direction == NAVDIR_UP) {
        to = row - 1;
    }
    return to >= 1 && to <= last ? giveNumber(to, end) : S_FALSE;
}

HRESULT GridAccessible::accHitTest(long left, long top, VARIANT* child) {
    VariantInit(child);
    if (!connected()) {
        return CO_E_OBJNOTCONNECTED;
    }
    POINT place{left, top};
    ScreenToClient(grid_->handle(), &place);
    RECT client{};
    GetClientRect(grid_->handle(), &client);
    if (PtInRect(&client, place) == FALSE) {
        return S_FALSE;
    }
    const int row = grid_->geometry().rowAt(place.y);
    return giveNumber(row > 0 ? row : CHILDID_SELF, child);
}

HRESULT GridAccessible::accDoDefaultAction(VARIANT /*child*/) { return DISP_E_MEMBERNOTFOUND; }
HRESULT GridAccessible::put_accName(VARIANT /*child*/, BSTR /*name*/) { return DISP_E_MEMBERNOTFOUND; }
// Values are entered by the user alone, where they are validated.
HRESULT GridAccessible::put_accValue(VARIANT /*child*/, BSTR /*value*/) { return DISP_E_MEMBERNOTFOUND; }

}  // namespace vrn::activex
