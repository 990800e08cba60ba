// The rules of COM that hold for every interface of every object.
#include <objsafe.h>

#include <array>
#include <vector>

#include "activex/com/Server.h"

namespace vrn::test {

namespace {

const std::vector<IID>& interfaces() {
    static const std::vector<IID> all{IID_IUnknown,
                                      IID_IDispatch,
                                      IID_IVRN_MethodEditor,
                                      IID_IMethodEditorServices,
                                      IID_IOleObject,
                                      IID_IOleControl,
                                      IID_IOleWindow,
                                      IID_IOleInPlaceObject,
                                      IID_IOleInPlaceActiveObject,
                                      IID_IViewObject,
                                      IID_IViewObject2,
                                      IID_IPersist,
                                      IID_IPersistStreamInit,
                                      IID_IPersistPropertyBag,
                                      IID_IProvideClassInfo,
                                      IID_IProvideClassInfo2,
                                      IID_IConnectionPointContainer,
                                      IID_ISupportErrorInfo};
    return all;
}

ComPtr<IUnknown> ask(IUnknown* object, const IID& iid) {
    ComPtr<IUnknown> found;
    object->QueryInterface(iid, &found);
    return found;
}

class IdentityTest : public ControlTest {};

// Counts like any object and hands out what its inner control has.
class Aggregate final : public TestObject<IUnknown> {
  public:
    explicit Aggregate(bool* ended) : ended_(ended) {}
    ~Aggregate() override { *ended_ = true; }
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        if (iid == IID_IUnknown) {
            return TestObject::QueryInterface(iid, object);
        }
        return inner->QueryInterface(iid, object);
    }
    ComPtr<IUnknown> inner;

  private:
    bool* ended_;
};

}  // namespace

TEST_F(IdentityTest, EveryInterfaceLeadsToEveryOther) {
    const auto control = create<IUnknown>();
    for (const auto& from : interfaces()) {
        const auto start = ask(control.Get(), from);
        ASSERT_NE(start, nullptr);
        EXPECT_EQ(ask(start.Get(), IID_IUnknown).Get(), control.Get()) << "one object, one unknown";
        for (const auto& to : interfaces()) {
            const auto end = ask(start.Get(), to);
            ASSERT_NE(end, nullptr);
            EXPECT_EQ(ask(end.Get(), from).Get(), start.Get());
        }
    }
    void* nothing = &nothing;
    EXPECT_EQ(control->QueryInterface(IID_IObjectSafety, &nothing), E_NOINTERFACE);
    EXPECT_EQ(nothing, nullptr);
    EXPECT_EQ(control->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

TEST_F(IdentityTest, InsideAnAggregateTheOuterObjectIsTheIdentity) {
    bool ended = false;
    auto outer = make<Aggregate>(&ended);
    const auto factory = Server::instance().factory();
    void* refused = &refused;
    EXPECT_EQ(factory->CreateInstance(outer.Get(), IID_IDispatch, &refused), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(refused, nullptr);
    ASSERT_EQ(factory->CreateInstance(outer.Get(), IID_IUnknown, &outer->inner), S_OK);
    for (const auto& iid : interfaces()) {
        const auto face = ask(outer.Get(), iid);
        ASSERT_NE(face, nullptr);
        EXPECT_EQ(ask(face.Get(), IID_IUnknown).Get(), static_cast<IUnknown*>(outer.Get()));
    }
    EXPECT_EQ(outer->count(), 1);
    ComPtr<IVRN_MethodEditor> editor;
    ASSERT_EQ(outer.As(&editor), S_OK);
    EXPECT_EQ(editor->refreshControls(), S_OK);
    editor.Reset();
    outer.Reset();
    EXPECT_TRUE(ended);
}

TEST_F(IdentityTest, TellsItsClassAndItsEvents) {
    const auto information = create<IProvideClassInfo2>();
    ComPtr<ITypeInfo> info;
    ASSERT_EQ(information->GetClassInfo(&info), S_OK);
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->guid, CLSID_VRN_MethodEditor);
    EXPECT_EQ(attributes->typekind, TKIND_COCLASS);
    info->ReleaseTypeAttr(attributes);
    GUID id{};
    EXPECT_EQ(information->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &id), S_OK);
    EXPECT_EQ(id, DIID_DVRN_MethodEditorEvents);
    EXPECT_EQ(information->GetGUID(77, &id), E_INVALIDARG);
    const auto support = as<ISupportErrorInfo>(information);
    for (const auto& iid : interfaces()) {
        EXPECT_EQ(support->InterfaceSupportsErrorInfo(iid), iid == IID_IUnknown ? S_FALSE : S_OK);
    }
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IObjectSafety), S_FALSE);
}

TEST_F(IdentityTest, NullArgumentsAreRefusedWithADescription) {
    const auto control = create();
    const auto object = as<IOleObject>(control);
    const auto oleControl = as<IOleControl>(control);
    const auto inPlace = as<IOleInPlaceObject>(control);
    const auto active = as<IOleInPlaceActiveObject>(control);
    const auto view = as<IViewObject2>(control);
    const auto stream = as<IPersistStreamInit>(control);
    const auto bag = as<IPersistPropertyBag>(control);
    const auto information = as<IProvideClassInfo2>(control);
    const auto points = as<IConnectionPointContainer>(control);
    ComPtr<IConnectionPoint> point;
    ASSERT_EQ(points->FindConnectionPoint(DIID_DVRN_MethodEditorEvents, &point), S_OK);
    DWORD cookie = 0;
    const std::vector<std::function<HRESULT()>> calls{
        [&] { return control->GetMethodXml(nullptr); },
        [&] { return control->get_MethodIsChanged(nullptr); },
        [&] { return control->get_AuditTrail(nullptr); },
        [&] { return control->GetTypeInfoCount(nullptr); },
        [&] { return control->GetTypeInfo(0, 0, nullptr); },
        [&] { return control->GetIDsOfNames(IID_NULL, nullptr, 1, 0, nullptr); },
        [&] { return control->Invoke(1, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr); },
        [&] { return object->GetClientSite(nullptr); },
        [&] { return object->EnumVerbs(nullptr); },
        [&] { return object->GetUserClassID(nullptr); },
        [&] { return object->GetUserType(USERCLASSTYPE_FULL, nullptr); },
        [&] { return object->SetExtent(DVASPECT_CONTENT, nullptr); },
        [&] { return object->GetExtent(DVASPECT_CONTENT, nullptr); },
        [&] { return object->Advise(nullptr, &cookie); },
        [&] { return object->EnumAdvise(nullptr); },
        [&] { return object->GetMiscStatus(DVASPECT_CONTENT, nullptr); },
        [&] { return oleControl->GetControlInfo(nullptr); },
        [&] { return oleControl->OnMnemonic(nullptr); },
        [&] { return inPlace->GetWindow(nullptr); },
        [&] { return inPlace->SetObjectRects(nullptr, nullptr); },
        [&] { return active->TranslateAccelerator(nullptr); },
        [&] {
            return view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0);
        },
        [&] { return view->GetExtent(DVASPECT_CONTENT, -1, nullptr, nullptr); },
        [&] { return stream->Load(nullptr); },
        [&] { return stream->Save(nullptr, TRUE); },
        [&] { return stream->GetSizeMax(nullptr); },
        [&] { return stream->GetClassID(nullptr); },
        [&] { return bag->Load(nullptr, nullptr); },
        [&] { return bag->Save(nullptr, TRUE, TRUE); },
        [&] { return information->GetClassInfo(nullptr); },
        [&] { return information->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, nullptr); },
        [&] { return points->EnumConnectionPoints(nullptr); },
        [&] { return points->FindConnectionPoint(DIID_DVRN_MethodEditorEvents, nullptr); },
        [&] { return point->GetConnectionInterface(nullptr); },
        [&] { return point->GetConnectionPointContainer(nullptr); },
        [&] { return point->Advise(nullptr, &cookie); },
        [&] { return point->Advise(control.Get(), nullptr); },
        [&] { return point->EnumConnections(nullptr); },
    };
    for (std::size_t i = 0; i < calls.size(); ++i) {
        EXPECT_EQ(calls[i](), E_POINTER) << "call " << i;
        EXPECT_THAT(takeErrorInformation().description, ::testing::EndsWith("must not be null.")) << "call " << i;
    }
}

}  // namespace vrn::test
