#include "text/TextFile.h"

#include <gtest/gtest.h>

#include "errors/Error.h"
#include "text/Unicode.h"

namespace vrn::text {
namespace {

int errorOf(auto call) {
    try {
        call();
    } catch (const errors::Error& error) {
        return error.number();
    }
    return 0;
}

std::string declared(const std::string& encoding, const std::string& rest) {
    return "<?xml version=\"1.0\" encoding=\"" + encoding + "\"?>" + rest;
}

std::string utf16(std::string_view text, bool bigEndian) {
    std::string out;
    for (const char16_t unit : toUtf16(text)) {
        const char bytes[] = {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
        out += bytes[bigEndian ? 1 : 0];
        out += bytes[bigEndian ? 0 : 1];
    }
    return out;
}

std::string errorText(std::string_view bytes) {
    try {
        return decodeXmlFile(bytes);
    } catch (const errors::Error& error) {
        return error.description();
    }
}

TEST(TextFile, NamesTheDeclaredEncoding) {
    EXPECT_EQ(declaredEncoding(declared("UTF-16", "<a/>")), "UTF-16");
    EXPECT_EQ(declaredEncoding("<?xml version = '1.0'\n encoding = 'x y' standalone='no'?>"), "x y");
    EXPECT_EQ(declaredEncoding("<?xml version='encoding=\"no\"'?><a/>"), "");
    EXPECT_EQ(declaredEncoding("<?xml encoding=?>"), "");
    EXPECT_EQ(declaredEncoding("<?xml encoding='x?>"), "");
    EXPECT_EQ(declaredEncoding("<a encoding='x'/>"), "");
}

TEST(TextFile, DecodesUtf16InBothOrders) {
    const std::string text = declared("UTF-16", "<a>\xC3\xA4\xF0\x9F\x98\x80</a>");
    EXPECT_EQ(decodeXmlFile("\xFF\xFE" + utf16(text, false)), text);
    EXPECT_EQ(decodeXmlFile("\xFE\xFF" + utf16(text, true)), text);
    EXPECT_EQ(decodeXmlFile(utf16(text, false)), text);
    EXPECT_EQ(decodeXmlFile(utf16(text, true)), text);
}

TEST(TextFile, DecodesByDeclaration) {
    EXPECT_EQ(decodeXmlFile("\xEF\xBB\xBF<a/>"), "<a/>");
    EXPECT_EQ(decodeXmlFile("\xEF\xBB\xBF" + declared("utf-8", "<a/>")), declared("utf-8", "<a/>"));
    EXPECT_EQ(decodeXmlFile(declared("iso-8859-1", "<\xE4/>")), declared("iso-8859-1", "<\xC3\xA4/>"));
    EXPECT_EQ(decodeXmlFile(declared("windows-1252", "<a>\x80</a>")), declared("windows-1252", "<a>\xE2\x82\xAC</a>"));
    EXPECT_EQ(decodeXmlFile(declared("UTF-8", "<\xC3\xA4/>")), declared("UTF-8", "<\xC3\xA4/>"));
    EXPECT_EQ(decodeXmlFile(""), "");
}

TEST(TextFile, RefusesAnotherEncodingThanTheDeclaredOne) {
    EXPECT_EQ(errorText(declared("UTF-16", "<a/>")),
              "The XML text declares the encoding \"UTF-16\" but is written in single bytes.");
    for (const std::string encoding : {"ISO-8859-1", "UTF-8", "UTF-16BE", "UTF-32"}) {
        EXPECT_EQ(errorText("\xFF\xFE" + utf16(declared(encoding, "<a/>"), false)),
                  "The XML text declares the encoding \"" + encoding + "\" but is written in UTF-16, low byte first.");
    }
    EXPECT_NE(errorText(utf16(declared("UTF-16LE", "<a/>"), true)).find("high byte first"), std::string::npos);
    EXPECT_NE(errorText("\xEF\xBB\xBF" + declared("ISO-8859-1", "<a/>")).find("written in UTF-8"), std::string::npos);
    EXPECT_NE(errorText(declared("UCS-4", "<a/>")).find("single bytes"), std::string::npos);
}

TEST(TextFile, NamesBytesThatTheEncodingDoesNotHave) {
    EXPECT_EQ(errorText("<a>\xE4</a>"),
              "The XML text has a byte at offset 3 that the encoding \"UTF-8\" does not have.");
    EXPECT_NE(errorText(declared("windows-1252", "\x81")).find("offset 45"), std::string::npos);
    EXPECT_NE(errorText(std::string("\xFF\xFE<\0x", 5)).find("offset 4 that the encoding \"UTF-16\""),
              std::string::npos);
    EXPECT_NE(errorText(std::string("\xFE\xFF\xD8\x00\0x", 6)).find("offset 2"), std::string::npos);
    EXPECT_EQ(errorOf([] { (void)decodeXmlFile("\xFF"); }), 5);
    for (const std::string encoding : {"no-such-thing", "UTF-8//IGNORE", "a b"}) {
        EXPECT_EQ(errorOf([&] { (void)decodeXmlFile(declared(encoding, "<a/>")); }), 5);
        EXPECT_EQ(errorOf([&] { (void)encodeXmlFile(declared(encoding, "<a/>")); }), 5);
    }
}

// EBCDIC and its like could not hold the declaration that was just read.
TEST(TextFile, KnowsNoEncodingThatWritesAsciiOtherwise) {
    for (const std::string encoding : {"cp037", "IBM500", "cp1026", "cp1047", "UTF-7"}) {
        EXPECT_EQ(errorText(declared(encoding, "<a/>")),
                  "The encoding \"" + encoding + "\" of the XML text is unknown.");
        EXPECT_EQ(errorOf([&] { (void)encodeXmlFile(declared(encoding, "<a/>")); }), 5);
    }
}

// As Windows writes them: its own code pages, whatever standard the name belongs to.
TEST(TextFile, ReadsEastAsianPagesAsWindowsDoes) {
    const auto reads = [](const std::string& encoding, const std::string& bytes, const std::string& text) {
        EXPECT_EQ(decodeXmlFile(declared(encoding, "<a>" + bytes + "</a>")), declared(encoding, "<a>" + text + "</a>"));
        EXPECT_EQ(encodeXmlFile(declared(encoding, "<a>" + text + "</a>")), declared(encoding, "<a>" + bytes + "</a>"));
    };
    reads("Shift_JIS", "C:\\~ \x87\x40", "C:\\~ \xE2\x91\xA0");
    reads("GB2312", "\x81\x40", "\xE4\xB8\x82");
    reads("big5", "\xA4\xA4\xF9\xD6", "\xE4\xB8\xAD\xE7\xA2\x81");
    reads("ks_c_5601-1987", "C:\\ \x81\x41", "C:\\ \xEA\xB0\x82");
}

TEST(TextFile, NamesNoEncodingThatIsNoName) {
    for (const std::string& encoding : {std::string("a\nb"), std::string("\xFF"), std::string(41, 'a')}) {
        for (const std::string& bytes :
             {declared(encoding, "<a/>"), "\xFF\xFE" + utf16(declared(encoding, "<a/>"), false)}) {
            EXPECT_EQ(errorText(bytes), "What the XML text declares as its encoding is not the name of one.");
        }
        EXPECT_EQ(errorOf([&] { (void)encodeXmlFile(declared(encoding, "<a/>")); }), 5);
    }
}

TEST(TextFile, EncodesAsDeclared) {
    EXPECT_EQ(encodeXmlFile("<\xC3\xA4/>"), "<\xC3\xA4/>");
    EXPECT_EQ(encodeXmlFile(declared("UTF-16", "<\xF0\x9F\x98\x80/>")),
              "\xFF\xFE" + utf16(declared("UTF-16", "<\xF0\x9F\x98\x80/>"), false));
    for (const std::string encoding :
         {"UTF-8", "UTF-16", "utf-16le", "UTF-16BE", "ISO-8859-1", "windows-1252", "US-ASCII"}) {
        const std::string text = declared(encoding, "<a>x</a>");
        EXPECT_EQ(decodeXmlFile(encodeXmlFile(text)), text);
    }
    const std::string large = declared("windows-1252", "<a>" + std::string(10000, 'x') + "\xE2\x82\xAC</a>");
    EXPECT_EQ(decodeXmlFile(encodeXmlFile(large)), large);
}

TEST(TextFile, WritesReferencesForWhatTheEncodingLacks) {
    const std::string omega = "\xCE\xA9";
    const std::string content = "<a b='" + omega + ">\"'>" + omega + "<!-- > --><?p \" ?><![CDATA[<" + omega +
                                "]]><b c=\"'" + omega + "\"/>" + omega + "</a>";
    EXPECT_EQ(encodeXmlFile(declared("ISO-8859-1", content)),
              declared("ISO-8859-1",
                       "<a b='&#937;>\"'>&#937;<!-- > --><?p \" ?><![CDATA[<]]>&#937;<![CDATA[]]>"
                       "<b c=\"'&#937;\"/>&#937;</a>"));
    for (const std::string& fixed : {"<" + omega + "/>", "<!--" + omega + "--><a/>", "<?p " + omega + "?><a/>"}) {
        EXPECT_EQ(errorOf([&] { (void)encodeXmlFile(declared("ISO-8859-1", fixed)); }), 5) << fixed;
    }
}

TEST(TextFile, ReadsTheDeclaration) {
    EXPECT_EQ(declarationData("<?xml version='1.0' \n?><a/>"), "version='1.0'");
    EXPECT_EQ(declarationData("\xEF\xBB\xBF<?xml\tx?>"), "x");
    EXPECT_EQ(declarationData("<?xml-stylesheet x?><a/>"), std::nullopt);
    EXPECT_EQ(declarationData("<?xml?>"), std::nullopt);
    EXPECT_EQ(declarationData("<?xml "), std::nullopt);
    EXPECT_EQ(declarationData(" <?xml version='1.0'?>"), std::nullopt);
}

}  // namespace
}  // namespace vrn::text
