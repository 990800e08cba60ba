#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <vector>

#include "errors/Error.h"
#include "errors/Handlers.h"
#include "errors/modErr.h"

namespace vrn::errors {
namespace {

const std::string application = "vrnMethodEditorVersion: " + versionText();

TEST(CopyError, KeepsForeignSourcesAndNamesItsOwn) {
    const struct {
        std::string_view ownSource;
        std::string_view defaultSource;
        std::string_view expected;
    } cases[] = {
        {"vrnMethodEditor", "where", "where"},
        {"vrnMethodEditor", "", "vrnMethodEditor"},
        {"VRNMETHODEDITOR", "where", "VRNMETHODEDITOR"},
        {"SomeComponent", "where", "SomeComponent"},
        {"", "where", "where"},
        {"", "", ""},
    };
    for (const auto& [own, fallback, expected] : cases) {
        copyError({-5, "text", std::string(own), "file.chm", 7, 2}, fallback);
        EXPECT_EQ(g_structError.lngNumber, -5);
        EXPECT_EQ(g_structError.strDescription, "text");
        EXPECT_EQ(g_structError.strSource, expected);
        EXPECT_EQ(g_structError.strHelpFile, "file.chm");
        EXPECT_EQ(g_structError.lngHelpContext, 7);
    }
}

TEST(CopyError, ASystemErrorGetsTheSystemsText) {
    copyError({0, "ignored", "ignored", "file.chm", 7, 2}, "where");
    EXPECT_EQ(g_structError.lngNumber, 2);
    EXPECT_EQ(g_structError.strDescription, GetSystemMessage(2));
    EXPECT_EQ(g_structError.strSource, "where");
    EXPECT_EQ(g_structError.strHelpFile, "file.chm");
    EXPECT_EQ(g_structError.lngHelpContext, 7);
}

TEST(CopyError, WithoutAnErrorItFailsAndLeavesTheRecord) {
    copyError({9, "before", "foreign", "", 0, 0}, "");
    try {
        copyError({}, "where");
        ADD_FAILURE();
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), 13);
        EXPECT_EQ(error.description(), "Type mismatch");
    }
    EXPECT_EQ(g_structError.lngNumber, 9);
    EXPECT_EQ(g_structError.strDescription, "before");
}

TEST(SystemMessage, LosesOneLineEndOnly) {
    const auto answering = [](const std::optional<std::string>& answer) {
        return [answer](std::uint32_t) { return answer; };
    };
    EXPECT_EQ(GetSystemMessage(1, answering("text\r\n")), "text");
    EXPECT_EQ(GetSystemMessage(1, answering(std::nullopt)), "(No such error)");
    EXPECT_EQ(GetSystemMessage(1, answering("")), "(No such error)");
    EXPECT_EQ(GetSystemMessage(-1), "(No such error)");
    EXPECT_FALSE(GetSystemMessage(2).empty());
    for (const auto& [text, expected] : std::vector<std::pair<std::string, std::string>>{
             {"ab\r\n\r\n", "ab\r\n"}, {"\r\n", ""}, {"x", "x"}, {"x\n", "x\n"}, {"x\r", "x\r"}, {"", ""}}) {
        EXPECT_EQ(removeTerminatingCRLF(text), expected);
    }
}

TEST(SystemMessage, AFailingLookUpIsToldInTheText) {
    const auto failing = [](std::uint32_t) -> std::optional<std::string> { throw Error(7, "no memory", "lookup"); };
    EXPECT_EQ(GetSystemMessage(-3, failing),
              "An error occured in .GetSystemMessage for lngMsgID = -3.\r\n"
              "Report this error and the circumstances of it's appearence.\r\n\r\n"
              "Original error message:\r\nNumber: 7\r\nDescription: no memory\r\nSource: lookup");
}

TEST(StandardHandler, ReportsAndAnswersTheDefault) {
    std::vector<MethodEditorErrorArguments> raised;
    MethodEditorErrorEvent event;
    event.connect([&](const MethodEditorErrorArguments& arguments) { raised.push_back(arguments); });
    EXPECT_EQ(standardHandler(event, "Fine ", [] { return std::string("result"); }), "result");
    EXPECT_TRUE(raised.empty());

    EXPECT_EQ(standardHandler(event, "FillMethod ", []() -> std::string { throwObjectNotSet(); }), "");
    ASSERT_EQ(raised.size(), 1U);
    EXPECT_EQ(raised[0].lngError, 91);
    EXPECT_EQ(raised[0].strError, "Object variable or With block variable not set");
    EXPECT_EQ(raised[0].strApplication, application);
    EXPECT_EQ(raised[0].strModule, "vrnMthd");
    EXPECT_EQ(raised[0].strProcedure, "FillMethod ");
    EXPECT_EQ(raised[0].intLineNumber, 0);
}

TEST(StandardHandler, TurnsForeignExceptionsIntoErrors) {
    std::vector<std::string> raised;
    MethodEditorErrorEvent event;
    event.connect([&](const MethodEditorErrorArguments& arguments) {
        raised.push_back(std::to_string(arguments.lngError) + " " + arguments.strError);
    });
    standardHandler(event, "", [] { throw std::bad_alloc(); });
    standardHandler(event, "", [] { static_cast<void>(std::vector<int>().at(3)); });
    standardHandler(event, "", [] { throw std::runtime_error("foreign"); });
    standardHandler(event, "", [] { throw 5; });
    EXPECT_EQ(raised, (std::vector<std::string>{"7 Out of memory", "9 Subscript out of range", "51 foreign",
                                                "51 Internal error"}));
}

TEST(StandardHandler, SurvivesTheHostsHandler) {
    MethodEditorErrorEvent event;
    const auto failing = [] { throwOverflow(); };
    standardHandler(event, "nobody listens ", failing);
    int calls = 0;
    event.connect([&](const MethodEditorErrorArguments&) {
        ++calls;
        event.connect(nullptr);  // lets go of the handler that runs
        ++calls;
        throw std::runtime_error("the host's own failure");
    });
    standardHandler(event, "a host that throws ", failing);
    standardHandler(event, "no handler any more ", failing);
    EXPECT_EQ(calls, 2);
}

TEST(Rethrowing, ChainsTheSourceAndKeepsTheRest) {
    try {
        rethrowing("vrnMethodEditor.Outer.a ", [] {
            rethrowing("vrnMethodEditor.Inner.b ", [] { throw Error(438, "text", "foreign", "file.chm", 7); });
        });
        ADD_FAILURE();
    } catch (const Error& error) {
        EXPECT_EQ(error.source(), "vrnMethodEditor.Outer.a Version: " + versionText() +
                                      " At line: 0|vrnMethodEditor.Inner.b Version: " + versionText() +
                                      " At line: 0|foreign");
        EXPECT_EQ(error.number(), 438);
        EXPECT_EQ(error.description(), "text");
        EXPECT_EQ(error.helpFile(), "file.chm");
        EXPECT_EQ(error.helpContext(), 7);
    }
    EXPECT_EQ(rethrowing("x ", [] { return 4; }), 4);
}

}  // namespace
}  // namespace vrn::errors
