// Files: which ones a call means, what is said of those that are none, how they are written.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <thread>

#include "cli/ToolFixture.h"
#include "hosts/cli/System.h"

namespace vrn::test {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

class FilesTest : public ToolFixture {
  protected:
    std::size_t filesIn(const std::string& name) const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(path(name)), fs::directory_iterator()));
    }
    std::string fault(const std::string& name, const std::string& content) {
        try {
            cli::system::replaceFile(path(name).string(), content, "");
        } catch (const cli::Fault& error) {
            return text::replacedAll(error.what(), folder.string() + "/", "");
        }
        return "none";
    }
};

TEST_F(FilesTest, FoldersStandForTheirMethodsInOrderOfNames) {
    fs::create_directories(path("methods/b/c.xml"));
    for (const auto* const name : {"methods/z.xml", "methods/a.XML", "methods/b/m.xml", "methods/b/c.xml/n.xml",
                                   "methods/.hidden.xml", "methods/notes.txt"}) {
        writeMethod(name, {"COUNT(3)"});
    }
    fs::copy(path("set"), path("methods/set"));
    EXPECT_EQ(run("verify @methods @methods/z.xml @methods/../methods/b/m.xml"), 0);
    EXPECT_EQ(out, withCurrentVersion("intact    methods/a.XML (version @VERSION@)\n"
                                      "intact    methods/b/c.xml/n.xml (version @VERSION@)\n"
                                      "intact    methods/b/m.xml (version @VERSION@)\n"
                                      "intact    methods/z.xml (version @VERSION@)\n"));
    fs::rename(path("methods/set/macros.xml"), path("methods/m.xml"));
    EXPECT_EQ(
        run("check @methods --macros @methods/m.xml --objects @methods/set/objects.xml --config @methods/set/config.xml"),
        0)
        << err;
}

TEST_F(FilesTest, WhatCannotBeReadIsToldAndTheOthersGoOn) {
    writeMethod("methods/good.xml", {"COUNT(3)"});
    write("methods/bad.xml", "<Method>\n  <Syringe></Method>");
    write("methods/empty.xml", "");
    write("methods/latin.xml", "<?xml version='1.0' encoding='martian'?><Method/>");
    write("methods/other.xml", "<Macros/>");
    write("methods/m\xE9thode.xml", "<Method>");
    fs::create_directory(path("methods/none"));
    std::ofstream(path("methods/huge.xml")).close();
    fs::resize_file(path("methods/huge.xml"), 200'000'000);
    EXPECT_EQ(run("verify @methods @methods/nothing.xml @methods/none --jobs 3"), 2);
    EXPECT_EQ(out, withCurrentVersion("intact    methods/good.xml (version @VERSION@)\n"));
    EXPECT_THAT(err, HasSubstr("vrnmethod: methods/bad.xml:2:"));
    EXPECT_THAT(err, HasSubstr("vrnmethod: methods/empty.xml: is empty\n"));
    EXPECT_THAT(err, HasSubstr("vrnmethod: methods/latin.xml: The encoding \"martian\""));
    EXPECT_THAT(err, HasSubstr("vrnmethod: methods/other.xml: its root element is <Macros>, not <Method>\n"));
    EXPECT_THAT(err, HasSubstr("vrnmethod: methods/m\\xE9thode.xml:1:"));
    EXPECT_THAT(err, HasSubstr("vrnmethod: methods/huge.xml: is larger than 64 MB"));
    EXPECT_THAT(err, HasSubstr("vrnmethod: methods/nothing.xml: no such file or folder\n"));
    EXPECT_THAT(err, HasSubstr("vrnmethod: no methods found in methods/none\n"));
    EXPECT_EQ(run("verify --json @methods/other.xml"), 2);
    EXPECT_EQ(
        out,
        "{\"file\":\"methods/other.xml\",\"error\":\"methods/other.xml: its root element is <Macros>, not <Method>\"}\n");
    EXPECT_EQ(run("check @methods/good.xml --macros @methods --objects @set/objects.xml --config @set/config.xml"), 2);
    EXPECT_EQ(err, "vrnmethod: methods: is a folder\n");
    EXPECT_EQ(run("check @methods/good.xml"), 2);
    EXPECT_THAT(err, StartsWith("vrnmethod: name the document set"));
}

TEST_F(FilesTest, AFileIsReplacedWholeWithItsPermissions) {
    write("methods/f", "old");
    fs::permissions(path("methods/f"), fs::perms(0640));
    fs::create_symlink("f", path("methods/link"));
    cli::system::replaceFile(path("methods/link").string(), "new", ".bak");
    EXPECT_TRUE(fs::is_symlink(path("methods/link")));
    EXPECT_EQ(read("methods/f"), "new");
    EXPECT_EQ(read("methods/f.bak"), "old");
    EXPECT_EQ(fs::status(path("methods/f")).permissions(), fs::perms(0640));
    EXPECT_EQ(fs::status(path("methods/f.bak")).permissions(), fs::perms(0640));
    EXPECT_EQ(filesIn("methods"), 3U);
    fs::permissions(path("methods/f"), fs::perms(0444));
    EXPECT_EQ(fault("methods/f", "newer"), "methods/f: is read-only");
    EXPECT_EQ(fault("methods", "x"), "methods: is a folder");
    EXPECT_EQ(fault("nowhere/f", "x"), "nowhere/f: its folder does not exist");
    EXPECT_EQ(read("methods/f"), "new");
    EXPECT_EQ(filesIn("methods"), 3U) << "nothing is left beside it";
}

TEST_F(FilesTest, WhatChangedSinceItWasReadIsNotReplaced) {
    write("f", "theirs");
    const auto replace = [&](const std::string& asRead) {
        try {
            cli::system::replaceFile("f", "ours", "~", asRead);
        } catch (const cli::Fault& error) {
            return std::string(error.what());
        }
        return std::string("replaced");
    };
    EXPECT_EQ(replace("as read"), "f: was changed after it was read; nothing was written");
    EXPECT_EQ(read("f"), "theirs");
    EXPECT_FALSE(fs::exists("f~"));
    EXPECT_EQ(replace("theirs"), "replaced");
    fs::remove("f");
    EXPECT_EQ(replace("ours"), "f: was removed after it was read; nothing was written");
    EXPECT_FALSE(fs::exists("f"));
}

TEST_F(FilesTest, OneAtATimeWritesAFile) {
    writeMethod("m.xml", {"COUNT(3)"});
    fs::create_symlink("m.xml", path("link.xml"));
    auto claim = cli::system::claimFile("m.xml");
    EXPECT_THROW((void)cli::system::claimFile("link.xml", std::chrono::milliseconds(0)), cli::Fault);
    // Who waits works on what the one before has left.
    std::thread other([&] { EXPECT_EQ(run("edit @m.xml --script - @set", "insert COUNT"), 0) << err; });
    writeMethod("new.xml", {"COUNT(3)", "COUNT(4)"});
    fs::rename("new.xml", "m.xml");
    claim.reset();
    other.join();
    EXPECT_THAT(steps("m.xml"), ::testing::ElementsAre("COUNT(3)", "COUNT(4)", "COUNT(3)"));
}

TEST_F(FilesTest, ALinkToNothingStaysALink) {
    fs::create_symlink("methods/target", path("link"));
    cli::system::replaceFile("link", "new", "");
    EXPECT_TRUE(fs::is_symlink("link"));
    EXPECT_EQ(read("methods/target"), "new");
}

TEST_F(FilesTest, ABackupDestroysNothing) {
    writeMethod("methods/m.xml", {"COUNT(3)"});
    writeMethod("methods/m.xml.xml", {"COUNT(3)"});
    fs::copy(path("set/macros.xml"), path("macros.xml"));
    fs::copy_file(path("methods/m.xml"), path("macros"));
    const auto other = read("methods/m.xml.xml");
    const auto sign = "sign --force @methods/m.xml @methods/m.xml.xml --backup .xml";
    write("methods/m.xml", text::encodeXmlFile(text::replacedAll(text("methods/m.xml"), "COUNT(3)", "COUNT(4)")));
    EXPECT_EQ(run(sign), 2);
    EXPECT_EQ(
        err,
        "vrnmethod: methods/m.xml.xml: the backup would replace a file that this call uses; nothing was written\n");
    EXPECT_EQ(read("methods/m.xml.xml"), other);
    write("methods/m.xml.old", "precious");
    fs::permissions(path("methods/m.xml.old"), fs::perms(0444));
    EXPECT_EQ(run("sign --force @methods/m.xml --backup .old"), 2);
    EXPECT_EQ(err, "vrnmethod: methods/m.xml.old: is read-only\n");
    EXPECT_EQ(read("methods/m.xml.old"), "precious");
    EXPECT_EQ(run("sign --force @methods/m.xml --backup /../n.xml"), 2);
    EXPECT_EQ(err, "vrnmethod: '/../n.xml' is no suffix: it leads to another folder\n");
    const auto macros = read("macros.xml");
    EXPECT_EQ(run("edit @macros --macros macros.xml --objects @set/objects.xml --config @set/config.xml --script - "
                  "--backup .xml",
                  "insert COUNT"),
              2);
    EXPECT_THAT(err, StartsWith("vrnmethod: macros.xml: the backup would replace"));
    EXPECT_EQ(read("macros.xml"), macros);
}

TEST_F(FilesTest, TheDeclaredEncodingIsKept) {
    const auto method = signedMethod({"NOTE(é)"});
    const auto body = method.substr(method.find("?>") + 2);
    const auto unsignedBody = text::replacedAll(body, "DigestValue>", "Removed>");
    const auto sign = [&](const std::string& declaration) {
        write("m.xml", text::encodeXmlFile(declaration + unsignedBody));
        EXPECT_EQ(run("sign --force @m.xml"), 0) << err;
        EXPECT_EQ(run("verify @m.xml"), 0) << out << err;
        return read("m.xml");
    };
    EXPECT_THAT(sign("<?xml version=\"1.0\" encoding=\"UTF-8\"?>"),
                StartsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?><Method "));
    EXPECT_THAT(sign("<?xml version=\"1.0\" encoding=\"ISO-8859-1\" standalone=\"yes\"?>"),
                StartsWith("<?xml version=\"1.0\" encoding=\"ISO-8859-1\" standalone=\"yes\"?><Method "));
    EXPECT_THAT(read("m.xml"), HasSubstr("NOTE(\xE9)"));
    EXPECT_THAT(sign("<?xml version=\"1.0\" encoding=\"UTF-16\"?>"), StartsWith(std::string("\xFF\xFE<\0?\0", 6)));
    auto bigEndian = text::encodeXmlFile("<?xml version=\"1.0\" encoding=\"UTF-16\"?>" + unsignedBody);
    for (std::size_t i = 0; i < bigEndian.size(); i += 2) {
        std::swap(bigEndian[i], bigEndian[i + 1]);
    }
    write("m.xml", bigEndian);
    EXPECT_EQ(run("sign --force @m.xml"), 0);
    EXPECT_THAT(read("m.xml"), StartsWith(std::string("\xFE\xFF\0<\0?", 6)));
    EXPECT_EQ(run("verify @m.xml"), 0) << out << err;
    EXPECT_THAT(sign(""), StartsWith("<Method "));
    write("m.xml", "\xEF\xBB\xBF" + unsignedBody);
    EXPECT_EQ(run("sign --force @m.xml"), 0);
    EXPECT_THAT(read("m.xml"), StartsWith("\xEF\xBB\xBF<Method "));
}

TEST_F(FilesTest, WhatEndsACallIsALineOfJsonToo) {
    writeMethod("m.xml", {"COUNT(3)"});
    const auto expectFault = [this](const std::string& call, const std::string& json) {
        EXPECT_EQ(run(call), 2);
        EXPECT_EQ(out, json + "\n");
        EXPECT_THAT(err, testing::StartsWith("vrnmethod: "));
    };
    expectFault("edit @set --json --script @gone.txt @m.xml",
                R"({"file":"m.xml","error":"gone.txt: no such file or folder"})");
    expectFault("diff --json @m.xml @gone.xml",
                R"({"old":"m.xml","new":"gone.xml","error":"gone.xml: no such file or folder"})");
    expectFault("check --format json --set nowhere @m.xml",
                R"({"error":"nowhere/macros.xml: no such file or folder"})");
    EXPECT_EQ(run("edit @set --json --script @gone.txt -", read("m.xml")), 2);
    EXPECT_THAT(out, testing::IsEmpty()) << "the output is the method";
}

TEST_F(FilesTest, AFolderWithoutMethodsIsNoSuccess) {
    EXPECT_EQ(run("check @set set"), 2);
    EXPECT_THAT(err, HasSubstr("vrnmethod: no methods found in set\n"));
    writeMethod("methods/m.xml", {"COUNT(3)"});
    EXPECT_EQ(run("check @set @methods @methods/m.xml @methods"), 0) << "named twice is found all the same";
}

TEST_F(FilesTest, AnEmptyValueIsNoValue) {
    writeMethod("m.xml", {"COUNT(3)"});
    const auto before = read("m.xml");
    for (const std::string call :
         {"update @set @m.xml --backup @", "update @set --backup= @m.xml", "update --set @ @m.xml",
          "update @set -b @ @m.xml", "verify @", "edit @set --audit= --script - @m.xml", "catalogue macros @ @set",
          "check --set= set @m.xml", "verify --jobs= @m.xml"}) {
        EXPECT_EQ(run(call, "set 1 Number=4"), 2) << call;
        EXPECT_THAT(err, HasSubstr(": a value is needed that is not empty\n")) << call;
    }
    EXPECT_EQ(read("m.xml"), before);
}

}  // namespace
}  // namespace vrn::test
