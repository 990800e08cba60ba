#include "activex/com/Container.h"

namespace vrn::test {

class Container::Frame final : public TestObject<IOleInPlaceFrame> {
  public:
    explicit Frame(Container& container) : container_(container) {}
    HRESULT STDMETHODCALLTYPE GetWindow(HWND* handle) override {
        *handle = container_.window;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL /*enter*/) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetBorder(LPRECT /*border*/) override { return INPLACE_E_NOTOOLSPACE; }
    HRESULT STDMETHODCALLTYPE RequestBorderSpace(LPCBORDERWIDTHS /*widths*/) override { return INPLACE_E_NOTOOLSPACE; }
    HRESULT STDMETHODCALLTYPE SetBorderSpace(LPCBORDERWIDTHS widths) override {
        container_.note(widths == nullptr ? "SetBorderSpace null" : "SetBorderSpace");
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR /*name*/) override {
        container_.activeObject = object;
        container_.note(object == nullptr ? "SetActiveObject null" : "SetActiveObject");
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE InsertMenus(HMENU /*menu*/, LPOLEMENUGROUPWIDTHS /*widths*/) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE SetMenu(HMENU /*menu*/, HOLEMENU /*ole*/, HWND /*active*/) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE RemoveMenus(HMENU /*menu*/) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetStatusText(LPCOLESTR /*text*/) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnableModeless(BOOL enable) override {
        container_.note(enable != FALSE ? "EnableModeless true" : "EnableModeless false");
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(LPMSG /*message*/, WORD /*id*/) override { return S_FALSE; }

  private:
    Container& container_;
};

class Container::Site final : public TestObject<IOleClientSite, IOleInPlaceSite, IOleControlSite, IDispatch> {
  public:
    explicit Site(Container& container) : container_(container) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        *object = nullptr;
        if ((iid == IID_IOleInPlaceSite && !container_.hasInPlaceSite) ||
            (iid == IID_IOleControlSite && !container_.hasControlSite)) {
            return E_NOINTERFACE;
        }
        return TestObject::QueryInterface(iid, object);
    }
    // IOleClientSite
    HRESULT STDMETHODCALLTYPE SaveObject() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD /*assign*/, DWORD /*which*/, IMoniker** /*moniker*/) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer** container) override {
        *container = nullptr;
        return E_NOINTERFACE;
    }
    HRESULT STDMETHODCALLTYPE ShowObject() override { return noted("ShowObject"); }
    HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL /*show*/) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override { return E_NOTIMPL; }
    // IOleInPlaceSite
    HRESULT STDMETHODCALLTYPE GetWindow(HWND* handle) override {
        *handle = FAILED(container_.windowContext) ? nullptr : container_.window;
        return container_.windowContext;
    }
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL /*enter*/) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override {
        container_.note("CanInPlaceActivate");
        return container_.allowsActivation ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override {
        container_.note("OnInPlaceActivate");
        return container_.onActivate;
    }
    HRESULT STDMETHODCALLTYPE OnUIActivate() override {
        container_.note("OnUIActivate");
        return container_.onUIActivate;
    }
    HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, LPRECT place,
                                               LPRECT clip, LPOLEINPLACEFRAMEINFO info) override {
        if (FAILED(container_.windowContext)) {
            return container_.windowContext;
        }
        *frame = container_.frame_.Get();
        (*frame)->AddRef();
        *document = nullptr;
        *place = *clip = container_.bounds;
        *info = {sizeof(*info), FALSE, container_.window, nullptr, 0};
        return noted("GetWindowContext");
    }
    HRESULT STDMETHODCALLTYPE Scroll(SIZE /*distance*/) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnUIDeactivate(BOOL /*undoable*/) override { return noted("OnUIDeactivate"); }
    HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override { return noted("OnInPlaceDeactivate"); }
    HRESULT STDMETHODCALLTYPE DiscardUndoState() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DeactivateAndUndo() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnPosRectChange(LPCRECT /*place*/) override { return S_OK; }
    // IOleControlSite
    HRESULT STDMETHODCALLTYPE OnControlInfoChanged() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE LockInPlaceActive(BOOL /*lock*/) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetExtendedControl(IDispatch** extended) override {
        *extended = nullptr;
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE TransformCoords(POINTL* /*himetric*/, POINTF* /*container*/, DWORD /*flags*/) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* message, DWORD modifiers) override {
        container_.note("TranslateAccelerator " + std::to_string(message->wParam) + " " + std::to_string(modifiers));
        return message->wParam == VK_TAB ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE OnFocus(BOOL got) override {
        return noted(got != FALSE ? "OnFocus true" : "OnFocus false");
    }
    HRESULT STDMETHODCALLTYPE ShowPropertyFrame() override { return E_NOTIMPL; }
    // IDispatch: the ambient properties
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* /*count*/) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** /*info*/) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* /*names*/, UINT /*count*/, LCID /*locale*/,
                                            DISPID* /*ids*/) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID /*reserved*/, LCID /*locale*/, WORD /*flags*/,
                                     DISPPARAMS* /*parameters*/, VARIANT* result, EXCEPINFO* /*exception*/,
                                     UINT* /*wrongArgument*/) override {
        if (const auto act = container_.whenAsked) {
            act(member);
        }
        const auto found = container_.ambients.find(member);
        return found == container_.ambients.end() ? DISP_E_MEMBERNOTFOUND
                                                  : VariantCopy(result, found->second.readOnly());
    }

  private:
    HRESULT noted(const char* call) {
        container_.note(call);
        return S_OK;
    }
    Container& container_;
};

namespace {

HWND makeWindow() {
    return CreateWindowExW(0, L"Static", L"container", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 800, 600, nullptr,
                           nullptr, nullptr, nullptr);
}

}  // namespace

Container::Container() : window(makeWindow()), frame_(make<Frame>(*this)), site_(make<Site>(*this)) {}

Container::~Container() {
    remove();
    DestroyWindow(window);
    EXPECT_EQ(site_->count(), 1) << "the control holds its site";
    EXPECT_EQ(frame_->count(), 1) << "the control holds the frame";
}

IUnknown* Container::site() const noexcept { return static_cast<IOleClientSite*>(site_.Get()); }

void Container::place(IUnknown* placed) {
    ComPtr<IPersistStreamInit> persistence;
    com::require(placed->QueryInterface(IID_PPV_ARGS(&control)));
    com::require(control->SetClientSite(site_.Get()));
    com::require(control.As(&persistence));
    com::require(persistence->InitNew());
}

void Container::loseWindow() {
    DestroyWindow(window);
    window = makeWindow();
}

void Container::remove() {
    if (const auto leaving = std::exchange(control, nullptr); leaving != nullptr) {
        EXPECT_EQ(leaving->Close(OLECLOSE_NOSAVE), S_OK);
        EXPECT_EQ(leaving->SetClientSite(nullptr), S_OK);
    }
    activeObject.Reset();
}

HRESULT Container::verb(LONG number, const MSG* message) const {
    return control->DoVerb(number, const_cast<MSG*>(message), site_.Get(), 0, window, &bounds);
}

HWND Container::controlWindow() const {
    ComPtr<IOleInPlaceObject> inPlace;
    HWND found = nullptr;
    control.As(&inPlace);
    inPlace->GetWindow(&found);
    return found;
}

bool Container::translate(WPARAM key, UINT message) const {
    MSG pressed{GetFocus(), message, key, 1, 0, {}};
    return activeObject != nullptr && activeObject->TranslateAccelerator(&pressed) == S_OK;
}

void Container::note(const std::string& call) {
    calls.push_back(call);
    if (const auto act = whenCalled) {
        act(call);
    }
}

}  // namespace vrn::test
