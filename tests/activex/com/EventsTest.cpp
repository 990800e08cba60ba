// The connection point, and an event whose handlers do what they should not.
#include "activex/com/Sink.h"

namespace vrn::test {

namespace {

class EventsTest : public ControlTest {
  protected:
    // Without a catalogue the load raises the event, once.
    static HRESULT raiseOnce(IVRN_MethodEditor* control) {
        return control->SetXmlDocuments(nullptr, nullptr, nullptr, nullptr);
    }
};

}  // namespace

TEST_F(EventsTest, EverySinkGetsTheSixArguments) {
    const auto control = create();
    const auto first = make<Sink>();
    const auto second = make<Sink>();
    connect(control.Get(), first.Get());
    const DWORD cookie = connect(control.Get(), second.Get());
    EXPECT_EQ(raiseOnce(control.Get()), S_OK);
    for (const auto& sink : {first, second}) {
        ASSERT_EQ(sink->told.size(), 1U);
        EXPECT_EQ(sink->told[0].number, -2146621504);
        EXPECT_THAT(sink->told[0].texts, ::testing::ElementsAre("Macros xml and/or Object List xml is empty",
                                                                ::testing::StartsWith("vrnMethodEditorVersion: "),
                                                                "vrnMthd", "SetXmlDocuments "));
        EXPECT_EQ(sink->told[0].line, 0);
    }
    EXPECT_EQ(pointOf(control.Get())->Unadvise(cookie), S_OK);
    EXPECT_EQ(pointOf(control.Get())->Unadvise(cookie), CONNECT_E_NOCONNECTION);
    EXPECT_EQ(second->count(), 1);
    raiseOnce(control.Get());
    EXPECT_EQ(first->told.size(), 2U);
    EXPECT_EQ(second->told.size(), 1U);
}

TEST_F(EventsTest, TheConnectionPointKeepsItsContract) {
    const auto control = create();
    const auto container = as<IConnectionPointContainer>(control);
    ComPtr<IConnectionPoint> other;
    EXPECT_EQ(container->FindConnectionPoint(IID_IDispatch, &other), CONNECT_E_NOCONNECTION);
    ComPtr<IEnumConnectionPoints> points;
    ASSERT_EQ(container->EnumConnectionPoints(&points), S_OK);
    ComPtr<IConnectionPoint> point;
    ULONG fetched = 0;
    ASSERT_EQ(points->Next(1, &point, &fetched), S_OK);
    EXPECT_EQ(points->Next(1, &other, &fetched), S_FALSE);
    EXPECT_EQ(fetched, 0U);
    IID iid{};
    EXPECT_EQ(point->GetConnectionInterface(&iid), S_OK);
    EXPECT_EQ(iid, DIID_DVRN_MethodEditorEvents);
    ComPtr<IConnectionPointContainer> back;
    EXPECT_EQ(point->GetConnectionPointContainer(&back), S_OK);
    EXPECT_EQ(back.Get(), container.Get());
    DWORD cookie = 7;
    const auto deaf = make<TestObject<IUnknown>>();
    EXPECT_EQ(point->Advise(deaf.Get(), &cookie), CONNECT_E_CANNOTCONNECT);
    EXPECT_EQ(cookie, 0U);
    const auto sink = make<Sink>();
    cookie = connect(control.Get(), sink.Get());
    ComPtr<IEnumConnections> connections;
    ASSERT_EQ(point->EnumConnections(&connections), S_OK);
    std::vector<CONNECTDATA> found(2);
    EXPECT_EQ(connections->Next(2, found.data(), &fetched), S_FALSE);
    ASSERT_EQ(fetched, 1U);
    EXPECT_EQ(found[0].dwCookie, cookie);
    found[0].pUnk->Release();
    EXPECT_EQ(connections->Skip(1), S_FALSE);
    EXPECT_EQ(connections->Reset(), S_OK);
    EXPECT_EQ(connections->Skip(1), S_OK);
}

TEST_F(EventsTest, AHandlerThatMisbehavesHarmsNobody) {
    const auto control = create();
    const auto failing = make<Sink>();
    const auto leaving = make<Sink>();
    const auto loading = make<Sink>();
    failing->answer = DISP_E_EXCEPTION;
    connect(control.Get(), failing.Get());
    DWORD next = 0;
    // Takes its neighbour out while both are being told.
    leaving->whenTold = [&] { pointOf(control.Get())->Unadvise(std::exchange(next, 0)); };
    connect(control.Get(), leaving.Get());
    const auto neighbour = make<Sink>();
    next = connect(control.Get(), neighbour.Get());
    // Loads again from within the event of a load.
    loading->whenTold = [&] {
        loading->whenTold = nullptr;
        loadSmallSet(control.Get());
    };
    connect(control.Get(), loading.Get());
    EXPECT_EQ(raiseOnce(control.Get()), S_OK);
    EXPECT_EQ(failing->told.size(), 1U);
    EXPECT_EQ(neighbour->told.size(), 0U);
    EXPECT_EQ(loading->told.size(), 1U);
    ComPtr<IDispatch> built;
    EXPECT_EQ(control->GetMethodXml(&built), S_OK);
    EXPECT_EQ(rootOf(built.Get()), "Method") << "the load begun last counts";
}

TEST_F(EventsTest, AHandlerMayReleaseTheControl) {
    auto control = create();
    const auto sink = make<Sink>();
    connect(control.Get(), sink.Get());
    auto* const raw = control.Get();
    sink->whenTold = [&] { control.Reset(); };
    EXPECT_EQ(raiseOnce(raw), S_OK);
    EXPECT_EQ(sink->told.size(), 1U);
    EXPECT_EQ(sink->count(), 1) << "the control is gone";
}

TEST_F(EventsTest, FrozenEventsAreNotRaised) {
    const auto control = create();
    const auto sink = make<Sink>();
    connect(control.Get(), sink.Get());
    const auto oleControl = as<IOleControl>(control);
    oleControl->FreezeEvents(TRUE);
    oleControl->FreezeEvents(TRUE);
    raiseOnce(control.Get());
    oleControl->FreezeEvents(FALSE);
    raiseOnce(control.Get());
    EXPECT_TRUE(sink->told.empty());
    oleControl->FreezeEvents(FALSE);
    raiseOnce(control.Get());
    EXPECT_EQ(sink->told.size(), 1U);
}

}  // namespace vrn::test
