// The installation's own signature components and instrument service in place of the embedded ones.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "method/SmallSet.h"
#include "method/Verification.h"

namespace vrn::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

struct Calls {
    std::vector<std::string> made;
    bool intact = true;
    std::int32_t code = 0;
    bool fails = false;
};

class FakeV4 final : public services::SignatureV4 {
  public:
    explicit FakeV4(Calls& calls) : calls_(&calls) {}
    void sign(xml::Document& document, std::string_view key, std::string_view xpath) override {
        note("sign", document, key, xpath);
        document.documentElement().setAttribute("signed", "yes");
    }
    bool verify(const xml::Document& document, std::string_view key, std::string_view xpath) override {
        note("verify", document, key, xpath);
        return calls_->intact;
    }
    std::string signatureValue(const xml::Document& document, std::string_view key, std::string_view xpath) override {
        note("value", document, key, xpath);
        return "<print>";
    }

  private:
    void note(const std::string& what, const xml::Document& document, std::string_view key, std::string_view xpath) {
        if (calls_->fails) {
            throw errors::Error(1234, "No component", "elsewhere");
        }
        calls_->made.push_back(what + " " + document.documentElement().name() + " " + std::string(xpath) + " " +
                               std::string(key));
    }
    Calls* calls_;
};

class FakeV23 final : public services::SignatureV23 {
  public:
    explicit FakeV23(Calls& calls) : calls_(&calls) {}
    std::string sign(std::string_view text) override { return "signed " + std::string(text); }
    std::int32_t verify(const xml::Document& document, std::string_view reserved) override {
        calls_->made.push_back("verify" + std::string(reserved) + " " + document.documentElement().lastChild().xml());
        return calls_->code;
    }
    std::string describe(std::int32_t code) override { return "code " + std::to_string(code); }

  private:
    Calls* calls_;
};

class OwnServicesTest : public SmallSetTest {
  protected:
    OwnServicesTest() {
        state().services.createSignatureV4 = [this] { return std::make_unique<FakeV4>(calls); };
        state().services.createSignatureV23 = [this] { return std::make_unique<FakeV23>(calls); };
    }
    void loadVersion(const std::string& version) {
        auto texts = smallSet({});
        texts.method =
            methodOf({.steps = {"COUNT(4)"}, .head = version.empty() ? version : element("VERSION", version)});
        load(texts);
    }
    Calls calls;
    const std::string key = "<GUID signed=\"yes\">{5C1D0E7A-93F4-4B2E-8A61-2F7D94C0B3E8}</GUID>";
};

TEST_F(OwnServicesTest, Version4AsksTheHostsComponent) {
    loadVersion("04");
    EXPECT_THAT(calls.made,
                ElementsAre("sign GUID /GUID {5C1D0E7A-93F4-4B2E-8A61-2F7D94C0B3E8}", "verify Method /Method " + key));
    EXPECT_THAT(rows(), ElementsAre("01 COUNT"));
    calls.intact = false;
    loadVersion("4");
    EXPECT_THAT(errorTexts(), ElementsAre("-2147220991 SetXmlDocuments |Method failed verification."));
    EXPECT_THAT(rows(), IsEmpty());
}

TEST_F(OwnServicesTest, OldVersionsAskTheHostsComponent) {
    loadVersion("3");
    EXPECT_THAT(
        calls.made,
        ElementsAre("verify <Guid>signed &lt;Guid&gt;{5C1D0E7A-93F4-4B2E-8A61-2F7D94C0B3E8}&lt;/Guid&gt;</Guid>"));
    calls.made.clear();
    calls.code = 77;
    loadVersion("02");
    loadVersion("");
    EXPECT_THAT(errorTexts(),
                ElementsAre("-2147220991 SetXmlDocuments |code 77", "-2147220991 SetXmlDocuments |code 77"));
    ASSERT_EQ(calls.made.size(), 2U);
    EXPECT_THAT(calls.made[1], HasSubstr("verify <Macros>"));
    std::string text;
    EXPECT_EQ(method::Verify_Guid_Signiture(state(), xml::Document(), text), 0);
}

TEST_F(OwnServicesTest, BuildsAreFingerprintedAndSignedByTheHostsComponent) {
    loadSteps({"COUNT(4)"});
    calls.made.clear();
    const auto text = built();
    EXPECT_THAT(text, HasSubstr(R"(<Method TimingInformationID="&lt;print&gt;")"));
    EXPECT_THAT(text, HasSubstr(R"( signed="yes">)"));
    EXPECT_THAT(calls.made,
                ElementsAre(HasSubstr("sign GUID /GUID"), "value Method /Method " + key, "sign Method /Method " + key));
}

TEST_F(OwnServicesTest, ComponentThatFailsIsReported) {
    loadSteps({"COUNT(4)"});
    calls.fails = true;
    EXPECT_EQ(built(), "none");
    EXPECT_THAT(errorTexts(),
                ElementsAre("1234 AddTimingInformationID |No component", "1234 GetMethodXml |No component"));
    EXPECT_TRUE(state().booBaselineLoaded);
    errors.clear();
    EXPECT_FALSE(editor().MethodIsChanged());
    loadVersion("04");
    EXPECT_EQ(errorTexts()[2], "1234 vrnMethodEditor.VRN_MethodEditor.VerifyMethod_v4 |No component");
    EXPECT_THAT(rows(), IsEmpty());
}

TEST_F(OwnServicesTest, InstrumentServiceNamesAndUnits) {
    instrument->names["UL"] = {"Full"};
    instrument->names["WASH_STATION"] = {"Own"};
    loadSteps({"WASH(Full,Own,7)"});
    EXPECT_THAT(box->shown, IsEmpty());
    EXPECT_THAT(state().grdMacro.row(2)->items(), ElementsAre("W1", "W2", "Own", "SL.Station"));
    EXPECT_THAT(instrument->asked, ::testing::Contains("UnitInfo UL"));
    EXPECT_THAT(builtTexts("MacroValues"), ElementsAre("WASH(Full,Own,7)"));
    EXPECT_EQ(state().strUnits, "UL;WASH_STATION");
}

}  // namespace
}  // namespace vrn::test
