#include <gtest/gtest.h>

#include "errors/Error.h"
#include "support/Services.h"

namespace vrn::errors {
namespace {

constexpr std::string_view joinedSource = "MessageBoxEx@modMsgBox.messageBox";

TEST(MessageBox, ShowsTextsInTheAnsiCodePage) {
    test::RecordingMessageBox box;
    EXPECT_EQ(messageBox(box, 0, "5 µl, 日", "caption €", styleInformation), buttonOk);
    ASSERT_EQ(box.shown.size(), 1U);
    EXPECT_EQ(box.shown[0].text, "5 µl, ?");
    EXPECT_EQ(box.shown[0].caption, "caption €");
    EXPECT_EQ(box.shown[0].style, 64);
    EXPECT_TRUE(box.fallbacks.empty());
}

TEST(MessageBox, AKnownFailureIsShownWithItsNumberAndSource) {
    const struct {
        ErrorState error;
        std::string_view number;
        std::string_view source;
    } cases[] = {
        {{0, "", "", "", 0, 1400}, "1400", joinedSource},
        {{429, "d", "vrnMethodEditor", "", 0, 0}, "429", joinedSource},
        {{-2147024882, "d", "Component", "", 0, 5}, "-2147024882", "Component"},
    };
    for (const auto& [error, number, source] : cases) {
        test::RecordingMessageBox box;
        box.button = 0;
        box.error = error;
        EXPECT_EQ(messageBox(box, 0, "日 message", "title", styleInformation), 0);
        ASSERT_EQ(box.fallbacks.size(), 1U);
        EXPECT_EQ(
            box.fallbacks[0].text,
            "MessageBoxEx API was unable to show a message.\r\nErr.Number: " + std::string(number) +
                "\r\nErr.Source: " + std::string(source) +
                "\r\nErr.Description: &  g_structError.strDescription & CONST_DBLLINEoriginal message was: \r\n日 message");
        EXPECT_EQ(box.fallbacks[0].caption, joinedSource);
        EXPECT_EQ(box.fallbacks[0].style, 16);
    }
}

TEST(MessageBox, AnUnknownFailureIsShownUnderTheCallersTitle) {
    test::RecordingMessageBox box;
    box.button = 0;
    EXPECT_EQ(messageBox(box, 0, "message", "title", styleInformation), 0);
    ASSERT_EQ(box.fallbacks.size(), 1U);
    EXPECT_EQ(box.fallbacks[0].text,
              "The non-blocking messagebox returned an unreported error. The message was:\r\nmessage\r\n"
              "Look in the system event log for specifics on the messagebox error.");
    EXPECT_EQ(box.fallbacks[0].caption, "title");
    EXPECT_EQ(box.fallbacks[0].style, 16);
}

TEST(MessageBox, AFailureInsideIsRecordedAndThrownOn) {
    test::RecordingMessageBox box;
    const struct {
        std::string_view own;
        std::string_view recorded;
    } cases[] = {{"vrnMethodEditor", "modMsgBox.messageBox"}, {"Component", "Component"}};
    for (const auto& [own, recorded] : cases) {
        box.whileShown = [source = std::string(own)] { throw Error(438, "failed", source, "file.chm", 7); };
        try {
            messageBox(box, 0, "message", "title", styleError);
            ADD_FAILURE();
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), 438);
            EXPECT_EQ(error.description(), "failed");
            EXPECT_EQ(error.source(), recorded);
            EXPECT_EQ(error.helpFile(), "file.chm");
            EXPECT_EQ(error.helpContext(), 7);
            EXPECT_EQ(g_structError.strSource, recorded);
        }
    }
    EXPECT_TRUE(box.fallbacks.empty());
}

}  // namespace
}  // namespace vrn::errors
