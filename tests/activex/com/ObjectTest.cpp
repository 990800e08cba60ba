// What a container reads, stores and paints of a control that is not active.
#include <array>

#include "activex/com/ContainerFixture.h"

namespace vrn::test {

namespace {

class ObjectTest : public ContainerTest {
  protected:
    // Counts the changes that it is told of.
    class ViewSink final : public TestObject<IAdviseSink> {
      public:
        void STDMETHODCALLTYPE OnDataChange(FORMATETC* /*format*/, STGMEDIUM* /*medium*/) override {}
        void STDMETHODCALLTYPE OnViewChange(DWORD /*aspect*/, LONG /*index*/) override { ++changes; }
        void STDMETHODCALLTYPE OnRename(IMoniker* /*moniker*/) override {}
        void STDMETHODCALLTYPE OnSave() override {}
        void STDMETHODCALLTYPE OnClose() override { ++closed; }
        int changes = 0;
        int closed = 0;
    };
};

int CALLBACK addText(HDC /*context*/, HANDLETABLE* /*table*/, METARECORD* record, int /*count*/, LPARAM into) {
    if (record->rdFunction == META_EXTTEXTOUT) {
        const int length = record->rdParm[2];
        const int rectangle = (record->rdParm[3] & (ETO_OPAQUE | ETO_CLIPPED)) != 0 ? 4 : 0;
        reinterpret_cast<std::vector<std::string>*>(into)->emplace_back(
            reinterpret_cast<const char*>(record->rdParm + 4 + rectangle), length);
    }
    return 1;
}

// The texts that a metafile writes.
std::vector<std::string> textsIn(HMETAFILE picture) {
    std::vector<std::string> texts;
    EnumMetaFile(nullptr, picture, addText, reinterpret_cast<LPARAM>(&texts));
    return texts;
}

// A bitmap to draw into, white at first.
class Canvas {
  public:
    Canvas(int width, int height) : width_(width), height_(height), context_(CreateCompatibleDC(nullptr)) {
        BITMAPINFO info{};
        info.bmiHeader = {sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        void* bits = nullptr;
        bitmap_ = CreateDIBSection(context_, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        pixels_ = static_cast<const std::uint32_t*>(bits);
        old_ = SelectObject(context_, bitmap_);
        const RECT all{0, 0, width, height};
        FillRect(context_, &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    }
    ~Canvas() {
        SelectObject(context_, old_);
        DeleteObject(bitmap_);
        DeleteDC(context_);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    [[nodiscard]] HDC context() const noexcept { return context_; }
    [[nodiscard]] int notWhite(const RECT& area) const {
        GdiFlush();
        int count = 0;
        for (int y = area.top; y < area.bottom; ++y) {
            for (int x = area.left; x < area.right; ++x) {
                count += (pixels_[y * width_ + x] & 0xFFFFFF) != 0xFFFFFF ? 1 : 0;
            }
        }
        return count;
    }
    [[nodiscard]] int notWhite() const { return notWhite({0, 0, width_, height_}); }
    /// How many of its points another one of the same size has otherwise.
    [[nodiscard]] int differences(const Canvas& other) const {
        GdiFlush();
        int count = 0;
        for (int i = 0; i < width_ * height_; ++i) {
            count += pixels_[i] != other.pixels_[i] ? 1 : 0;
        }
        return count;
    }

  private:
    int width_;
    int height_;
    HDC context_;
    HBITMAP bitmap_ = nullptr;
    HGDIOBJ old_ = nullptr;
    const std::uint32_t* pixels_ = nullptr;
};

HRESULT draw(IViewObject2* view, HDC context, const RECTL& bounds) {
    return view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, context, &bounds, nullptr, nullptr, 0);
}

}  // namespace

TEST_F(ObjectTest, TellsStatusSizeAndVerbs) {
    const auto object = as<IOleObject>(editor);
    DWORD status = 0;
    EXPECT_EQ(object->GetMiscStatus(DVASPECT_CONTENT, &status), S_OK);
    EXPECT_EQ(status, 131473U);
    SIZEL size{};
    EXPECT_EQ(object->GetExtent(DVASPECT_CONTENT, &size), S_OK);
    EXPECT_EQ(size.cx, 16933);
    EXPECT_EQ(size.cy, 12700);
    SIZEL other{1000, 2000};
    EXPECT_EQ(object->SetExtent(DVASPECT_CONTENT, &other), S_OK);
    EXPECT_EQ(object->SetExtent(DVASPECT_ICON, &other), DV_E_DVASPECT);
    EXPECT_EQ(as<IViewObject2>(editor)->GetExtent(DVASPECT_CONTENT, -1, nullptr, &size), S_OK);
    EXPECT_EQ(size.cy, 2000);
    ComPtr<IEnumOLEVERB> verbs;
    ASSERT_EQ(object->EnumVerbs(&verbs), S_OK);
    std::array<OLEVERB, 8> found{};
    ULONG count = 0;
    EXPECT_EQ(verbs->Next(8, found.data(), &count), S_FALSE);
    EXPECT_EQ(count, 5U);
    for (const auto& verb : found) {
        CoTaskMemFree(verb.lpszVerbName);
    }
    LPOLESTR name = nullptr;
    ASSERT_EQ(object->GetUserType(USERCLASSTYPE_FULL, &name), S_OK);
    EXPECT_EQ(std::wstring(name), L"Method editor control");
    CoTaskMemFree(name);
    const auto sink = make<ViewSink>();
    DWORD cookie = 0;
    EXPECT_EQ(object->Advise(sink.Get(), &cookie), S_OK);
    object->Close(OLECLOSE_SAVEIFDIRTY);
    EXPECT_EQ(sink->closed, 1);
    EXPECT_EQ(object->Unadvise(cookie), S_OK);
    EXPECT_EQ(object->Unadvise(cookie), OLE_E_NOCONNECTION);
}

TEST_F(ObjectTest, StoresNothingAndReadsItBack) {
    loadSmallSet(editor.Get());
    const auto persistence = as<IPersistStreamInit>(editor);
    ComPtr<IStream> stream;
    ASSERT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, &stream), S_OK);
    EXPECT_EQ(persistence->IsDirty(), S_FALSE);
    EXPECT_EQ(persistence->Save(stream.Get(), TRUE), S_OK);
    STATSTG statistics{};
    stream->Stat(&statistics, STATFLAG_NONAME);
    EXPECT_EQ(statistics.cbSize.QuadPart, 0U) << "nothing of the method is stored";
    EXPECT_EQ(create<IPersistStreamInit>()->Load(stream.Get()), S_OK);
    CLSID clsid{};
    EXPECT_EQ(persistence->GetClassID(&clsid), S_OK);
    EXPECT_EQ(clsid, CLSID_VRN_MethodEditor);
}

TEST_F(ObjectTest, DrawsItsTextIntoAMetafile) {
    loadSmallSet(editor.Get());
    const auto view = as<IViewObject2>(editor);
    Canvas direct(640, 480);
    ASSERT_EQ(draw(view.Get(), direct.context(), {0, 0, 640, 480}), S_OK);
    // In pixels, and in hundredths of a millimetre somewhere else.
    for (const RECTL& bounds : {RECTL{0, 0, 640, 480}, RECTL{1000, 500, 17933, 13200}}) {
        HDC const device = CreateICW(L"DISPLAY", nullptr, nullptr, nullptr);
        HDC const metafile = CreateMetaFileW(nullptr);
        SetMapMode(metafile, MM_ANISOTROPIC);
        SetWindowOrgEx(metafile, bounds.left, bounds.top, nullptr);
        SetWindowExtEx(metafile, bounds.right - bounds.left, bounds.bottom - bounds.top, nullptr);
        EXPECT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, device, metafile, &bounds, &bounds, nullptr, 0),
                  S_OK);
        HMETAFILE const picture = CloseMetaFile(metafile);
        DeleteDC(device);
        Canvas played(640, 480);
        SetMapMode(played.context(), MM_ANISOTROPIC);
        SetViewportExtEx(played.context(), 640, 480, nullptr);
        EXPECT_TRUE(PlayMetaFile(played.context(), picture));
        // A description, a step of the sequence, a caption of the grid.
        EXPECT_THAT(textsIn(picture), ::testing::IsSupersetOf({"First", "01 WASH", "Parameter", "Insert "}));
        DeleteMetaFile(picture);
        // Lines of one unit are no longer seen where a unit is less than a pixel.
        EXPECT_LT(played.differences(direct), bounds.left == 0 ? 640 * 480 / 50 : 640 * 480 / 10);
    }
}

TEST_F(ObjectTest, DrawsItselfWithoutWindows) {
    const Canvas canvas(400, 300);
    const auto view = as<IViewObject2>(editor);
    EXPECT_EQ(draw(view.Get(), canvas.context(), {100, 50, 300, 250}), S_OK);
    EXPECT_GT(canvas.notWhite({100, 50, 300, 250}), 1000);
    EXPECT_EQ(canvas.notWhite({0, 0, 400, 50}), 0) << "outside of its bounds";
    EXPECT_EQ(container.controlWindow(), nullptr);
    // A context of other units, upwards: 0.1 mm.
    const Canvas metric(400, 300);
    SetMapMode(metric.context(), MM_LOMETRIC);
    std::array<POINT, 2> corners{{{0, 0}, {400, 300}}};
    DPtoLP(metric.context(), corners.data(), 2);
    EXPECT_EQ(draw(view.Get(), metric.context(), {corners[0].x, corners[0].y, corners[1].x, corners[1].y}), S_OK);
    EXPECT_GT(metric.notWhite(), 1000);
    EXPECT_EQ(GetMapMode(metric.context()), MM_LOMETRIC);
    HDC const metafile = CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(draw(view.Get(), metafile, {0, 0, 640, 480}), S_OK);
    HENHMETAFILE const recorded = CloseEnhMetaFile(metafile);
    const Canvas played(640, 480);
    const RECT all{0, 0, 640, 480};
    PlayEnhMetaFile(played.context(), recorded, &all);
    EXPECT_GT(played.notWhite(), 1000);
    DeleteEnhMetaFile(recorded);
    const RECTL bounds{0, 0, 10, 10};
    EXPECT_EQ(view->Draw(DVASPECT_ICON, -1, nullptr, nullptr, nullptr, canvas.context(), &bounds, nullptr, nullptr, 0),
              DV_E_DVASPECT);
    EXPECT_EQ(
        view->Draw(DVASPECT_CONTENT, 0, nullptr, nullptr, nullptr, canvas.context(), &bounds, nullptr, nullptr, 0),
        DV_E_LINDEX);
}

TEST_F(ObjectTest, ChangesAreToldWhileNoWindowShowsThem) {
    const auto view = as<IViewObject2>(editor);
    const auto sink = make<ViewSink>();
    ASSERT_EQ(view->SetAdvise(DVASPECT_CONTENT, ADVF_PRIMEFIRST, sink.Get()), S_OK);
    EXPECT_EQ(sink->changes, 1);
    loadSmallSet(editor.Get());
    EXPECT_EQ(sink->changes, 2);
    container.verb(OLEIVERB_SHOW);
    editor->put_DisableMethod(VARIANT_TRUE);
    EXPECT_EQ(sink->changes, 2);
    as<IOleInPlaceObject>(editor)->InPlaceDeactivate();
    EXPECT_EQ(sink->changes, 3);
    DWORD aspects = 0;
    ComPtr<IAdviseSink> back;
    EXPECT_EQ(view->GetAdvise(&aspects, nullptr, &back), S_OK);
    EXPECT_EQ(back.Get(), sink.Get());
    EXPECT_EQ(aspects, static_cast<DWORD>(DVASPECT_CONTENT));
    EXPECT_EQ(view->SetAdvise(DVASPECT_CONTENT, ADVF_ONLYONCE, sink.Get()), S_OK);
    editor->refreshControls();
    editor->refreshControls();
    EXPECT_EQ(sink->changes, 4);
}

}  // namespace vrn::test
