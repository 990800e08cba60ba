// The version 4 signatures against an independent implementation: the program xmlsec1.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

#include "services/EmbeddedSignatures.h"
#include "services/SignatureTexts.h"
#include "text/TextFile.h"

namespace vrn::services {
namespace {

/// A fresh directory with the key in it, where the program runs.
class XmlsecPeer : public testing::Test {
  protected:
    void SetUp() override {
        std::string pattern = (std::filesystem::temp_directory_path() / "vrn-xmlsec-XXXXXX").string();
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        directory_ = pattern;
        EmbeddedSignatureV4 component;
        key_ = signatureKeyV4(component);
        write("key", key_);
        ASSERT_EQ(run("xmlsec1 --version"), 0)
            << "These tests need the program xmlsec1 (package xmlsec1): " << read("log");
    }
    void TearDown() override {
        if (!directory_.empty()) {
            std::filesystem::remove_all(directory_);
        }
    }

    void write(const std::string& name, const std::string& bytes) const {
        std::ofstream(directory_ / name, std::ios::binary) << bytes;
    }
    [[nodiscard]] std::string read(const std::string& name) const {
        std::ostringstream bytes;
        bytes << std::ifstream(directory_ / name, std::ios::binary).rdbuf();
        return bytes.str();
    }
    /// Runs a shell command in the directory; what it writes is in the file "log".
    [[nodiscard]] int run(const std::string& command) const {
        return std::system(("cd '" + directory_.string() + "' && { " + command + "; } >log 2>&1").c_str());
    }
    [[nodiscard]] std::string signedText(const std::string& text) const {
        xml::Document document = parsed(text);
        EmbeddedSignatureV4().sign(document, key_, "/Method");
        return document.xml();
    }
    [[nodiscard]] bool verifies(const std::string& text) const {
        return EmbeddedSignatureV4().verify(parsed(text), key_, "/Method");
    }

    std::filesystem::path directory_;
    std::string key_;
};

/// Contents of a method, each with something that writers and readers of XML like to disagree on.
std::vector<std::string> bodies() {
    std::vector<std::string> texts{
        "<Method><A>plain</A><B c=\"1\"/></Method>",
        "<Method><A>\xC3\xA9\xC3\x9F\xE6\xB0\xB4\xED\x95\x9C\xF0\x9F\x98\x80</A><B "
        "c=\"\xF0\x9F\xA7\xAA\xC2\xA0\"/></Method>",
        "<Method c=\"&lt;&amp;&gt;'&quot;\" "
        "a=\"\"><A>&lt;&amp;&gt;'\"]]&gt;</A><![CDATA[<&>]]><A><![CDATA[]]></A></Method>",
        "<Method c=\"&#13;&#10;&#9; x \"><A>1&#13;\n2\r\n3&#13;</A><A>\t&#9;x</A><A></A></Method>",
        "<?one?><?two  data ?><!-- c --><Method><!-- c -->x<?three?></Method><?four x?><!-- c -->",
        "<Method xmlns:p=\"urn:p\" p:c=\"1\" xmlns:q=\"urn:q\" b=\"2\"><q:A xmlns=\"urn:d\"><B "
        "xmlns=\"\"/></q:A></Method>",
    };
    for (const std::string& text : std::vector<std::string>(texts)) {
        texts.push_back("<?xml version=\"1.0\" encoding=\"UTF-16\"?>\r\n" + text);
    }
    return texts;
}

TEST_F(XmlsecPeer, AcceptsWhatTheEditorSigns) {
    std::string files;
    for (const std::string& body : bodies()) {
        const std::string name = std::to_string(files.size()) + ".xml";
        write(name, text::encodeXmlFile(signedText(body)));
        files += " " + name;
    }
    // What only a document in memory can hold.
    xml::Document document = parsed("<Method a=\"\"><A/><B/></Method>");
    document.documentElement().setAttribute("a", "\t1\r\n2 ");
    document.selectSingleNode("/Method/A").setText("1\r\n2\r");
    document.selectSingleNode("/Method/B").setText("  ");
    EmbeddedSignatureV4().sign(document, key_, "/Method");
    write("memory.xml", document.xml());
    EXPECT_EQ(run("xmlsec1 --verify --hmackey:vrnMethodEditor key memory.xml" + files), 0) << read("log");
}

TEST_F(XmlsecPeer, MakesWhatTheEditorAccepts) {
    const auto emptied = [](std::string text, const std::string& name) {
        const std::size_t from = text.find('>', text.find("<" + name)) + 1;
        return text.erase(from, text.find("</" + name + ">") - from);
    };
    std::vector<std::string> names;
    std::string commands = "true";
    const auto add = [&](const std::string& signedMethod) {
        const std::string blank = emptied(emptied(signedMethod, "DigestValue"), "SignatureValue");
        ASSERT_FALSE(verifies(blank));
        names.push_back(std::to_string(names.size()));
        write(names.back() + ".in", text::encodeXmlFile(blank));
        commands +=
            " && xmlsec1 --sign --hmackey:vrnMethodEditor key --output " + names.back() + " " + names.back() + ".in";
    };
    for (const std::string& body : bodies()) {
        add(signedText(body));
    }
    ASSERT_EQ(run(commands), 0) << read("log");
    for (const std::string& name : names) {
        const std::string made = text::decodeXmlFile(read(name));
        EXPECT_TRUE(verifies(made)) << made;
    }
}

TEST_F(XmlsecPeer, SignsWithAPrefix) {
    std::string blank = replacedAll(replacedAll(signatureOfX, "<", "<ds:"), "<ds:/", "</ds:");
    blank = replaced(replaced(blank, "xmlns=", "xmlns:ds="), "w0Jw516wAlmCy8LnU0qNH5mqrozYcyr1JQwG5Xl44CE=", "");
    blank = replaced(blank, "qkqV9P8glOByRWdWvrk/eG+JUhnocyK/pMgwHH9S26A=", "");
    write("in", "<Method><A>x</A>" + blank + "</Method>");
    ASSERT_EQ(run("xmlsec1 --sign --hmackey:vrnMethodEditor key --output out in"), 0) << read("log");
    EXPECT_TRUE(verifies(read("out"))) << read("out");
}

TEST_F(XmlsecPeer, RefusesEveryChangedCharacterLikeTheEditor) {
    const std::string good = signedText("<Method><A>WASH(1;2.5)</A><B>p H7</B></Method>");
    ASSERT_TRUE(verifies(good));
    write("good.xml", good);
    bool inTag = false;
    int changed = 0;
    for (std::size_t at = 0; at < good.find("<Signature"); ++at) {
        inTag = good[at] == '<' || (inTag && good[at] != '>');
        if (inTag || good[at] == '>') {
            continue;
        }
        std::string bad = good;
        bad[at] = bad[at] == 'x' ? 'y' : 'x';
        EXPECT_FALSE(verifies(bad)) << bad;
        write("bad" + std::to_string(++changed) + ".xml", bad);
    }
    EXPECT_EQ(changed, 15);
    ASSERT_EQ(run("for f in *.xml; do xmlsec1 --verify --hmackey:vrnMethodEditor key $f >/dev/null 2>&1 && echo $f; "
                  "done; true"),
              0);
    EXPECT_EQ(read("log"), "good.xml\n");
}

}  // namespace
}  // namespace vrn::services
