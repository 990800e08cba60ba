#include "hosts/activex/form/GridAccessible.h"

#include <new>
#include <string>
#include <utility>

#include "com/Com.h"
#include "hosts/activex/form/GridWindow.h"
#include "text/windows/Wide.h"

namespace vrn::activex {

namespace {

std::atomic<long> objects{0};

// Clears what a question gives its answer in; false when there is no place for one.
template <typename Answer>
bool clear(Answer* answer) noexcept {
    if (answer != nullptr) {
        *answer = {};
    }
    return answer != nullptr;
}

HRESULT give(const std::string& text, BSTR* out) {
    *out = com::Bstr(text).release();
    return S_OK;
}

HRESULT giveNumber(long number, VARIANT* out) noexcept {
    out->vt = VT_I4;
    out->lVal = number;
    return S_OK;
}

HRESULT nothing(BSTR* out) noexcept { return clear(out) ? S_FALSE : E_POINTER; }

}  // namespace

GridAccessible::GridAccessible(GridWindow& grid) noexcept : grid_(&grid) { ++objects; }
GridAccessible::~GridAccessible() { --objects; }
long GridAccessible::count() noexcept { return objects; }

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

int GridAccessible::lastRow() const noexcept { return grid_->model().rowCount() - 1; }

long GridAccessible::childOf(const Element& element) const noexcept {
    return element.button ? lastRow() + element.row : element.row;
}

template <typename Body>
HRESULT GridAccessible::ask(Body&& body) noexcept {
    if (!connected()) {
        return CO_E_OBJNOTCONNECTED;
    }
    AddRef();  // the reader may let go while it is answered
    HRESULT result = E_FAIL;
    {
        const auto running = grid_->enter();
        try {
            result = std::forward<Body>(body)();
        } catch (const std::bad_alloc&) {
            result = E_OUTOFMEMORY;
        } catch (...) {
            result = E_FAIL;
        }
    }
    Release();
    return result;
}

template <typename Answer, typename Body>
HRESULT GridAccessible::ask(Answer* answer, Body&& body) noexcept {
    return clear(answer) ? ask(std::forward<Body>(body)) : E_POINTER;
}

template <typename Answer, typename Body>
HRESULT GridAccessible::askAbout(const VARIANT& child, Answer* answer, Body&& body) noexcept {
    return clear(answer) ? askAbout(child, std::forward<Body>(body)) : E_POINTER;
}

template <typename Body>
HRESULT GridAccessible::askAbout(const VARIANT& child, Body&& body) noexcept {
    return ask([&] {
        const int last = lastRow();
        if (child.vt != VT_I4 || child.lVal < 0 || child.lVal > 2 * last) {
            return E_INVALIDARG;
        }
        const bool button = child.lVal > last;
        const int row = static_cast<int>(child.lVal) - (button ? last : 0);
        return std::forward<Body>(body)(Element{row, button});
    });
}

bool GridAccessible::gridHasFocus() const noexcept {
    const HWND focus = GetFocus();
    return focus != nullptr && (focus == grid_->handle() || focus == grid_->editor().window());
}

HRESULT GridAccessible::get_accParent(IDispatch** parent) {
    return ask(parent, [&] {
        return AccessibleObjectFromWindow(grid_->handle(), static_cast<DWORD>(OBJID_WINDOW), IID_IDispatch,
                                          reinterpret_cast<void**>(parent));
    });
}

HRESULT GridAccessible::get_accChildCount(long* count) {
    return ask(count, [&] {
        *count = 2 * lastRow();
        return S_OK;
    });
}

HRESULT GridAccessible::get_accChild(VARIANT child, IDispatch** object) {
    // A simple element: it has no object of its own.
    return askAbout(child, object, [](const Element&) { return S_FALSE; });
}

HRESULT GridAccessible::get_accName(VARIANT child, BSTR* name) {
    return askAbout(child, name, [&](const Element& element) {
        const auto text = element.row == 0 ? std::string("Parameters") : grid_->model().cellText(element.row, 0);
        return give(element.button ? "Values for " + text : text, name);
    });
}

HRESULT GridAccessible::get_accValue(VARIANT child, BSTR* value) {
    return askAbout(child, value, [&](const Element& element) {
        const bool isCell = element.row != 0 && !element.button;
        return isCell ? give(grid_->model().cellText(element.row, 1), value) : DISP_E_MEMBERNOTFOUND;
    });
}

HRESULT GridAccessible::get_accDescription(VARIANT /*child*/, BSTR* description) { return nothing(description); }

HRESULT GridAccessible::get_accRole(VARIANT child, VARIANT* role) {
    return askAbout(child, role, [&](const Element& element) {
        return giveNumber(element.row == 0 ? ROLE_SYSTEM_TABLE
                          : element.button ? ROLE_SYSTEM_BUTTONMENU
                                           : ROLE_SYSTEM_CELL,
                          role);
    });
}

HRESULT GridAccessible::get_accState(VARIANT child, VARIANT* state) {
    return askAbout(child, state, [&](const Element& element) { return giveNumber(statesOf(element), state); });
}

long GridAccessible::statesOf(const Element& element) const {
    const auto& model = grid_->model();
    const int row = element.row;
    const bool current = row == 0 || row == grid_->shownRow();
    long states = model.enabled() ? 0 : STATE_SYSTEM_UNAVAILABLE | STATE_SYSTEM_READONLY;
    if (element.button) {
        states |= STATE_SYSTEM_HASPOPUP | (grid_->menuPressed(row) ? STATE_SYSTEM_PRESSED : 0);
    } else {
        states |= grid_->takesFocus() ? STATE_SYSTEM_FOCUSABLE : 0;
        states |= current && gridHasFocus() ? STATE_SYSTEM_FOCUSED : 0;
    }
    if (row != 0) {
        states |= element.button ? 0 : STATE_SYSTEM_SELECTABLE | (current ? STATE_SYSTEM_SELECTED : 0);
        const auto& geometry = grid_->geometry();
        if (row < geometry.top || geometry.row(row).top >= geometry.height) {
            states |= STATE_SYSTEM_OFFSCREEN | STATE_SYSTEM_INVISIBLE;
        }
    }
    return states;
}

HRESULT GridAccessible::get_accHelp(VARIANT /*child*/, BSTR* help) { return nothing(help); }
HRESULT GridAccessible::get_accHelpTopic(BSTR* file, VARIANT /*child*/, long* topic) {
    if (topic == nullptr) {
        return E_POINTER;
    }
    *topic = -1;
    return nothing(file);
}
HRESULT GridAccessible::get_accKeyboardShortcut(VARIANT child, BSTR* shortcut) {
    return askAbout(child, shortcut,
                    [&](const Element& element) { return element.button ? give("Shift+F10", shortcut) : S_FALSE; });
}

HRESULT GridAccessible::get_accFocus(VARIANT* child) {
    return ask(child, [&] { return gridHasFocus() ? giveNumber(grid_->shownRow(), child) : S_FALSE; });
}

HRESULT GridAccessible::get_accSelection(VARIANT* children) {
    return ask(children, [&] {
        const int row = grid_->shownRow();
        return row > 0 ? giveNumber(row, children) : S_FALSE;
    });
}

HRESULT GridAccessible::get_accDefaultAction(VARIANT child, BSTR* action) {
    return askAbout(child, action,
                    [&](const Element& element) { return element.button ? give("Press", action) : S_FALSE; });
}

HRESULT GridAccessible::accSelect(long flags, VARIANT child) {
    return askAbout(child, [&](const Element& element) {
        if ((flags & SELFLAG_TAKEFOCUS) != 0) {
            SetFocus(grid_->handle());
        }
        if (element.row > 0 && connected()) {
            grid_->goTo(element.row);
        }
        return S_OK;
    });
}

RECT GridAccessible::placeOf(const Element& element) const {
    if (element.row == 0) {
        RECT client{};
        GetClientRect(grid_->handle(), &client);
        return client;
    }
    const auto& geometry = grid_->geometry();
    return element.button ? geometry.menu(element.row) : geometry.entry(element.row);
}

HRESULT GridAccessible::accLocation(long* left, long* top, long* width, long* height, VARIANT child) {
    if (!clear(left) || !clear(top) || !clear(width) || !clear(height)) {
        return E_POINTER;
    }
    return askAbout(child, [&](const Element& element) {
        RECT place = placeOf(element);
        MapWindowPoints(grid_->handle(), nullptr, reinterpret_cast<POINT*>(&place), 2);
        *left = place.left;
        *top = place.top;
        *width = place.right - place.left;
        *height = place.bottom - place.top;
        return S_OK;
    });
}

HRESULT GridAccessible::accNavigate(long direction, VARIANT start, VARIANT* end) {
    return askAbout(start, end, [&](const Element& element) {
        const int last = lastRow();
        Element to;
        if (element.row == 0) {
            to.row = direction == NAVDIR_FIRSTCHILD ? 1 : direction == NAVDIR_LASTCHILD ? last : 0;
        } else if (direction == NAVDIR_NEXT || direction == NAVDIR_DOWN) {
            to = {element.row + 1, element.button};
        } else if (direction == NAVDIR_PREVIOUS || direction == NAVDIR_UP) {
            to = {element.row - 1, element.button};
        } else if (direction == (element.button ? NAVDIR_LEFT : NAVDIR_RIGHT)) {
            to = {element.row, !element.button};
        }
        return to.row >= 1 && to.row <= last ? giveNumber(childOf(to), end) : S_FALSE;
    });
}

HRESULT GridAccessible::accHitTest(long left, long top, VARIANT* child) {
    return ask(child, [&] {
        POINT place{left, top};
        ScreenToClient(grid_->handle(), &place);
        RECT client{};
        GetClientRect(grid_->handle(), &client);
        if (PtInRect(&client, place) == FALSE) {
            return S_FALSE;
        }
        const auto& geometry = grid_->geometry();
        const int row = geometry.rowAt(place.y);
        const bool button = geometry.partAt(place.x, false) == GridPart::Menu;
        return giveNumber(row > 0 ? childOf({row, button}) : CHILDID_SELF, child);
    });
}

HRESULT GridAccessible::accDoDefaultAction(VARIANT child) {
    return askAbout(child, [&](const Element& element) {
        if (!element.button) {
            return DISP_E_MEMBERNOTFOUND;
        }
        grid_->openMenu(element.row);
        return S_OK;
    });
}

HRESULT GridAccessible::put_accName(VARIANT /*child*/, BSTR /*name*/) { return DISP_E_MEMBERNOTFOUND; }
// Values are entered by the user alone, where they are validated.
HRESULT GridAccessible::put_accValue(VARIANT /*child*/, BSTR /*value*/) { return DISP_E_MEMBERNOTFOUND; }

}  // namespace vrn::activex
