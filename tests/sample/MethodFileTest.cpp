// A host's way with a method, on the real control: what counts as changed, and what a saved file is worth.
#include "hosts/sample/MethodFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <stop_token>
#include <thread>

#include "errors/Error.h"
#include "hosts/sample/ChangeList.h"
#include "hosts/sample/Verification.h"
#include "hosts/sample/script/Dialogs.h"
#include "hosts/sample/script/HostWindow.h"
#include "hosts/sample/script/UserInput.h"
#include "hosts/sample/script/XmlText.h"
#include "sample/ActivationContext.h"

namespace vrn::test {
namespace {

namespace fs = std::filesystem;
using sample::MethodEditorError;

const fs::path samples = fs::path(VRN_SOURCE_DIR) / "samples";

// Presses OK in every message box of a thread.
class PatientUser {
  public:
    explicit PatientUser(DWORD thread)
        : hand_([thread](const std::stop_token& over) {
              while (!over.stop_requested()) {
                  if (const auto box = sample::openMessageBox(thread)) {
                      sample::pressOk(*box);
                  }
                  Sleep(2);
              }
          }) {}

  private:
    std::jthread hand_;
};

class MethodFileTest : public ::testing::Test {
  protected:
    MethodFileTest() { file.openSet((samples / "tutorial").wstring()); }
    ~MethodFileTest() override { fs::remove_all(folder); }

    void describe(const std::string& text) {
        sample::TextWindow(window.control().window(), "txtMethodDescription").replaceAll(text);
    }
    std::string description() { return sample::ChildWindow(window.control().window(), "txtMethodDescription").text(); }
    static fs::path temporaryFolder() {
        auto path = fs::temp_directory_path() / ("vrn-sample-" + std::to_string(GetCurrentProcessId()));
        fs::create_directories(path);
        return path;
    }

    Apartment apartment;
    ActivationContext context;
    std::vector<MethodEditorError> errors;
    sample::HostWindow window{[this](const MethodEditorError& error) {
        errors.push_back(error);
        file.noteError();
    }};
    sample::MethodFile file{window.control()};
    fs::path folder = temporaryFolder();
    const std::wstring method = (samples / "tutorial/methods/two-steps.xml").wstring();
    const std::wstring saved = (folder / "saved.xml").wstring();
};

TEST_F(MethodFileTest, ComparesWithWhatWasOpenedOrSavedLast) {
    ASSERT_TRUE(file.open(method));
    const auto now = [this] {
        const auto built = file.build();
        return built == nullptr ? std::string() : sample::textOf(built.Get());
    };
    EXPECT_TRUE(sample::changesBetween(file.reference(), now()).empty());
    describe("something else");
    EXPECT_EQ(sample::changesBetween(file.reference(), now()),
              (std::vector<sample::ChangeRow>{
                  {"Description", "My first method: wash, then inject 2 microlitres.", "something else"}}));
    ASSERT_TRUE(file.save(saved));
    EXPECT_TRUE(sample::changesBetween(file.reference(), now()).empty());
    file.startNew();
    EXPECT_EQ(file.reference(), "");
}

TEST_F(MethodFileTest, OpenedMethodIsUnchangedUntilTheUserChangesIt) {
    EXPECT_TRUE(file.open(method));
    EXPECT_EQ(file.path(), method);
    EXPECT_FALSE(file.isChanged());
    describe("something else");
    EXPECT_TRUE(file.isChanged());
    EXPECT_TRUE(file.knownAsChanged());
    file.startNew();
    EXPECT_EQ(file.path(), L"");
    EXPECT_FALSE(file.knownAsChanged());
}

TEST_F(MethodFileTest, BuildingForVerificationForgetsNoChange) {
    ASSERT_TRUE(file.open(method));
    describe("something else");
    for (int i = 0; i < 3; ++i) {
        const auto built = file.build();
        ASSERT_NE(built, nullptr);
        EXPECT_TRUE(sample::errorsWhenLoaded(file.set(), built.Get()).empty());
    }
    EXPECT_TRUE(file.isChanged());
}

TEST_F(MethodFileTest, SavedFileOpensAgainAndVerifies) {
    ASSERT_TRUE(file.open(method));
    describe("M\xC3\xBCller & <S\xC3\xB6hne>\nzweite Zeile");
    ASSERT_TRUE(file.save(saved));
    EXPECT_FALSE(file.isChanged());
    describe("lost");
    EXPECT_TRUE(file.isChanged());
    ASSERT_TRUE(file.open(saved));
    EXPECT_TRUE(errors.empty());
    EXPECT_EQ(description(), "M\xC3\xBCller & <S\xC3\xB6hne>\r\nzweite Zeile\r\n");
    EXPECT_FALSE(file.isChanged());
    std::ifstream bytes(fs::path(saved), std::ios::binary);
    EXPECT_EQ(bytes.get(), 0xFF);  // the declaration says UTF-16
    EXPECT_EQ(bytes.get(), 0xFE);
}

TEST_F(MethodFileTest, FileThatCannotBeWrittenLeavesTheMethodChanged) {
    ASSERT_TRUE(file.open(method));
    describe("something else");
    EXPECT_THROW(file.save((folder / "no/such/folder/x.xml").wstring()), errors::Error);
    EXPECT_TRUE(file.isChanged());
    EXPECT_EQ(file.path(), method);
}

TEST_F(MethodFileTest, TamperedMethodIsNotAcceptedAndKeepsItsFile) {
    file.openSet((samples / "instrument").wstring());
    const PatientUser user(GetCurrentThreadId());  // is told that the empty method has no syringe
    EXPECT_FALSE(file.open((samples / "instrument/methods/tampered.xml").wstring()));
    EXPECT_EQ(file.path(), L"");
    ASSERT_EQ(errors.size(), 1U);
    EXPECT_EQ(errors[0].lngError, -2147220991);
    EXPECT_EQ(errors[0].strError, L"Method failed verification.");
    EXPECT_EQ(errors[0].strModule, L"vrnMthd");
    EXPECT_EQ(errors[0].strProcedure, L"SetXmlDocuments ");
    EXPECT_EQ(errors[0].intLineNumber, 0);
}

TEST_F(MethodFileTest, FileThatCannotBeReadChangesNothing) {
    ASSERT_TRUE(file.open(method));
    std::ofstream(fs::path(saved)) << "<Method><open></Method>";
    EXPECT_THROW(file.open(saved), errors::Error);
    EXPECT_THROW(file.openSet(folder.wstring()), errors::Error);
    EXPECT_EQ(file.path(), method);
    EXPECT_FALSE(description().empty());
}

TEST_F(MethodFileTest, EmptySequenceGivesNoMethod) {
    file.startNew();
    EXPECT_EQ(file.build(), nullptr);
    EXPECT_FALSE(file.save(saved));
    EXPECT_FALSE(fs::exists(saved));
}

}  // namespace
}  // namespace vrn::test
