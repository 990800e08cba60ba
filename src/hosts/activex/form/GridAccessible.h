// The grid as assistive technology reads it: a table with a cell per parameter, named as the parameter and with its value, and a
// button per parameter that opens the menu of its values.
#pragma once

#include <windows.h>
// After windows.h, which it builds on.
#include <oleacc.h>

#include <atomic>

namespace vrn::activex {

class GridWindow;

/// Child k is the value cell of row k; the buttons follow after the cells, in the same order, and stand to the right of them.
/// Clients may keep the object for longer than the window lives; it then answers that it is
/// not connected any more.
class GridAccessible final : public IAccessible {
  public:
    explicit GridAccessible(GridWindow& grid) noexcept;
    void detach() noexcept { grid_ = nullptr; }
    /// How many there are in this module.
    [[nodiscard]] static long count() noexcept;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* argument) override;

    HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** parent) override;
    HRESULT STDMETHODCALLTYPE get_accChildCount(long* count) override;
    HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch** object) override;
    HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* name) override;
    HRESULT STDMETHODCALLTYPE get_accValue(VARIANT child, BSTR* value) override;
    HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT child, BSTR* description) override;
    HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* role) override;
    HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* state) override;
    HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT child, BSTR* help) override;
    HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR* file, VARIANT child, long* topic) override;
    HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT child, BSTR* shortcut) override;
    HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* child) override;
    HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* children) override;
    HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT child, BSTR* action) override;
    HRESULT STDMETHODCALLTYPE accSelect(long flags, VARIANT child) override;
    HRESULT STDMETHODCALLTYPE accLocation(long* left, long* top, long* width, long* height, VARIANT child) override;
    HRESULT STDMETHODCALLTYPE accNavigate(long direction, VARIANT start, VARIANT* end) override;
    HRESULT STDMETHODCALLTYPE accHitTest(long left, long top, VARIANT* child) override;
    HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT child) override;
    HRESULT STDMETHODCALLTYPE put_accName(VARIANT child, BSTR name) override;
    HRESULT STDMETHODCALLTYPE put_accValue(VARIANT child, BSTR value) override;

  protected:
    ~GridAccessible();  // by Release only

  private:
    /// What a child is: the grid itself with row 0, otherwise a cell or a button.
    struct Element {
        int row = 0;
        bool button = false;
    };
    /// The body of a question about the grid, whose windows, model and host stay for as long as it takes. What it throws
    /// becomes an HRESULT.
    template <typename Body>
    HRESULT ask(Body&& body) noexcept;
    /// The same about one child, which `body` gets. Refused for one that is not there.
    template <typename Body>
    HRESULT askAbout(const VARIANT& child, Body&& body) noexcept;
    /// The same with a place for the answer, which is cleared first.
    template <typename Answer, typename Body>
    HRESULT ask(Answer* answer, Body&& body) noexcept;
    template <typename Answer, typename Body>
    HRESULT askAbout(const VARIANT& child, Answer* answer, Body&& body) noexcept;
    [[nodiscard]] bool connected() const noexcept;
    [[nodiscard]] bool gridHasFocus() const noexcept;
    [[nodiscard]] int lastRow() const noexcept;
    [[nodiscard]] long childOf(const Element& element) const noexcept;
    [[nodiscard]] RECT placeOf(const Element& element) const;
    [[nodiscard]] long statesOf(const Element& element) const;

    std::atomic<ULONG> references_{1};
    GridWindow* grid_;
};

}  // namespace vrn::activex
