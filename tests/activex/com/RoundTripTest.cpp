// What a host gets back is what the engine signed, as the system's XML library reads it, and stays that in every way that a
// host may pass it on.
#include <msxml.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "activex/com/Server.h"
#include "activex/com/Sink.h"
#include "services/EmbeddedSignatures.h"
#include "support/OddDocuments.h"
#include "text/TextFile.h"
#include "text/windows/Wide.h"

namespace vrn::test {

namespace {

namespace fs = std::filesystem;

// The same for all versions of the library.
constexpr IID documentInterface{0x2933BF81, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

ComPtr<IXMLDOMDocument> knownDocument(const ComPtr<IDispatch>& document) {
    ComPtr<IXMLDOMDocument> known;
    com::require(document->QueryInterface(documentInterface, reinterpret_cast<void**>(known.GetAddressOf())));
    return known;
}

com::Variant wideText(const std::wstring& text) { return com::Variant(text::fromWide(text)); }

// An empty document of the system's library that keeps white space between elements, or drops it.
ComPtr<IDispatch> emptyDocument(bool preservingWhiteSpace) {
    auto made = document(L"<a/>");
    const auto known = knownDocument(made);
    com::require(known->put_async(VARIANT_FALSE));
    com::require(known->put_preserveWhiteSpace(preservingWhiteSpace ? VARIANT_TRUE : VARIANT_FALSE));
    return made;
}

ComPtr<IDispatch> passedAsText(const ComPtr<IDispatch>& original, bool preservingWhiteSpace) {
    auto made = emptyDocument(preservingWhiteSpace);
    EXPECT_TRUE(com::truthOf(com::Object(made).call(L"loadXML", {wideText(textOf(original)).get()})));
    return made;
}

ComPtr<IDispatch> loadedFrom(const fs::path& path, bool preservingWhiteSpace) {
    auto made = emptyDocument(preservingWhiteSpace);
    EXPECT_TRUE(com::truthOf(com::Object(made).call(L"load", {wideText(path.wstring()).get()}))) << path;
    return made;
}

bool isIntact(const std::string& text) {
    services::EmbeddedSignatureV4 component;
    return component.verify(parsed(text), services::signatureKeyV4(component), "/Method");
}

// What a tree holds, a line for each thing. Texts and CDATA sections next to each other are one text.
class Content {
  public:
    void element(std::string_view name, std::string_view namespaceUri) {
        endText();
        lines_.append("<").append(name).append(" of ").append(namespaceUri).append("\n");
    }
    void attributes(const std::map<std::string, std::string>& values) {
        for (const auto& [name, value] : values) {
            lines_ += "  " + name + "=" + value + "\n";
        }
    }
    void end() {
        endText();
        lines_ += ">\n";
    }
    void text(std::string_view content) { text_ += content; }
    std::string lines() { return lines_; }

  private:
    void endText() {
        if (!text_.empty()) {
            lines_ += "\"" + std::exchange(text_, {}) + "\"\n";
        }
    }

    std::string lines_;
    std::string text_;
};

class ContentVisitor final : public xml::NodeVisitor {
  public:
    bool startElement(const xml::ElementView& element) override {
        std::map<std::string, std::string> attributes;
        for (const auto& attribute : element.attributes) {
            if (attribute.namespaceUri != xml::xmlnsNamespace) {
                attributes[std::string(attribute.qualifiedName)] = attribute.value;
            }
        }
        content.element(element.qualifiedName, element.namespaceUri);
        content.attributes(attributes);
        return true;
    }
    void endElement(const xml::ElementView& /*element*/) override { content.end(); }
    void text(std::string_view text) override { content.text(text); }
    void cdata(std::string_view text) override { content.text(text); }
    void comment(std::string_view /*text*/) override {}
    void processingInstruction(std::string_view /*target*/, std::string_view /*data*/) override {}

    Content content;
};

std::string contentOf(const xml::Document& document) {
    ContentVisitor visitor;
    document.documentElement().accept(visitor);
    return visitor.content.lines();
}

std::string textBy(IXMLDOMNode* node, HRESULT (STDMETHODCALLTYPE IXMLDOMNode::*get)(BSTR*)) {
    com::Bstr text;
    com::require((node->*get)(text.put()));
    return text.utf8();
}

std::string valueOf(IXMLDOMNode* node) {
    com::Variant value;
    com::require(node->get_nodeValue(value.put()));
    return com::textOf(value);
}

// Without declarations, which one MSXML does not count among them.
std::map<std::string, std::string> attributesOf(IXMLDOMNode* element) {
    std::map<std::string, std::string> values;
    ComPtr<IXMLDOMNamedNodeMap> attributes;
    com::require(element->get_attributes(&attributes));
    for (ComPtr<IXMLDOMNode> attribute; attributes->nextNode(attribute.ReleaseAndGetAddressOf()) == S_OK;) {
        const auto name = textBy(attribute.Get(), &IXMLDOMNode::get_nodeName);
        if (!name.starts_with("xmlns")) {
            values[name] = valueOf(attribute.Get());
        }
    }
    return values;
}

void addElement(IXMLDOMNode* element, Content& content) {
    content.element(textBy(element, &IXMLDOMNode::get_nodeName), textBy(element, &IXMLDOMNode::get_namespaceURI));
    content.attributes(attributesOf(element));
    ComPtr<IXMLDOMNode> child;
    com::require(element->get_firstChild(&child));
    while (child != nullptr) {
        DOMNodeType type = NODE_INVALID;
        com::require(child->get_nodeType(&type));
        if (type == NODE_ELEMENT) {
            addElement(child.Get(), content);
        } else if (type == NODE_TEXT || type == NODE_CDATA_SECTION) {
            content.text(valueOf(child.Get()));
        }
        ComPtr<IXMLDOMNode> next;
        com::require(child->get_nextSibling(&next));
        child = next;
    }
    content.end();
}

std::string contentOf(const ComPtr<IDispatch>& document) {
    Content content;
    ComPtr<IXMLDOMElement> root;
    com::require(knownDocument(document)->get_documentElement(&root));
    addElement(root.Get(), content);
    return content.lines();
}

class RoundTripTest : public ControlTest {
  protected:
    ~RoundTripTest() override { DeleteFileW(file_.c_str()); }

    /// An editor that trusts old methods, with the set and this method in it.
    ComPtr<IVRN_MethodEditor> editorWith(const ComPtr<IDispatch>& method, Sink* sink = nullptr) {
        auto editor = create();
        com::require(as<IMethodEditorServices>(editor)->putref_SignatureV23(trustingSignature().Get()));
        if (sink != nullptr) {
            connect(editor.Get(), sink);
        }
        EXPECT_EQ(editor->SetXmlDocuments(set.macros.Get(), set.objects.Get(), method.Get(), set.configuration.Get()),
                  S_OK);
        return editor;
    }

    /// It holds what was signed, and does so in every way that it may come back.
    void expectSurvives(const ComPtr<IDispatch>& saved) {
        const auto text = text::fromWide(textOf(saved));
        EXPECT_TRUE(isIntact(text)) << text;
        EXPECT_EQ(contentOf(saved), contentOf(parsed(text)));
        expectSame(saved, saved, "as object");
        com::Object(saved).call(L"save", {wideText(file_.wstring()).get()});
        EXPECT_TRUE(isIntact(text::decodeXmlFile(bytesOfFile())));
        for (const bool preserving : {false, true}) {
            expectSame(saved, passedAsText(saved, preserving), preserving ? "as text, white space kept" : "as text");
            expectSame(saved, loadedFrom(file_, preserving), preserving ? "as file, white space kept" : "as file");
            expectSame(saved, passedAsText(passedAsText(saved, true), preserving), "as text twice");
        }
    }

    /// Editors find its signature intact in every way that it may be handed over.
    void expectIntact(const std::string& signedText) {
        const auto known = document(text::toWide(signedText));
        com::Object(known).call(L"save", {wideText(file_.wstring()).get()});
        for (const auto& method : {known, passedAsText(known, true), passedAsText(known, false),
                                   loadedFrom(file_, true), loadedFrom(file_, false)}) {
            const auto sink = make<Sink>();
            const auto editor = editorWith(method, sink.Get());
            EXPECT_TRUE(sink->told.empty()) << text::fromWide(textOf(method));
            EXPECT_NE(built(editor.Get()), nullptr);
        }
    }

    /// The set's documents; its method is what a test makes of it.
    SmallSet set;

  private:
    void expectSame(const ComPtr<IDispatch>& saved, const ComPtr<IDispatch>& passedOn, const char* how) {
        SCOPED_TRACE(how);
        const auto sink = make<Sink>();
        const auto editor = editorWith(passedOn, sink.Get());
        EXPECT_TRUE(sink->told.empty()) << (sink->told.empty() ? "" : sink->told[0].texts[0]);
        VARIANT_BOOL changed = VARIANT_TRUE;
        EXPECT_EQ(editor->get_MethodIsChanged(&changed), S_OK);
        EXPECT_EQ(changed, VARIANT_FALSE);
        const auto again = built(editor.Get());
        EXPECT_EQ(again ? textOf(again) : L"none", textOf(saved));
    }

    std::string bytesOfFile() const {
        std::ostringstream bytes;
        bytes << std::ifstream(file_, std::ios::binary).rdbuf();
        return bytes.str();
    }

    const ClosingUser user_;
    const fs::path file_ = fs::temp_directory_path() / "vrn-saved-method.xml";
};

}  // namespace

TEST_F(RoundTripTest, OfAnOddMethod) {
    auto odd = oddSet();
    const std::string_view version = "<VERSION>01</VERSION>";
    odd.method.erase(odd.method.find(version), version.size());
    const auto dom = [](const std::string& text) { return document(text::toWide(text)); };
    set = {dom(odd.macros), dom(odd.objectList), dom(odd.method), dom(odd.configuration)};
    const auto saved = built(editorWith(set.method).Get());
    ASSERT_NE(saved, nullptr);
    expectSurvives(saved);
}

// What the editor itself never writes: declarations, prefixes, attributes, comments, instructions.
TEST_F(RoundTripTest, OfAMethodThatAnotherToolSigned) {
    set = smallSet();
    xml::Document method = parsed(
        "<?xml version='1.0'?><?p i?><!-- c --><Method xmlns:unused='urn:u' xmlns:p='urn:p' p:b='2' b='1' "
        "c=\"&lt;&amp;&quot;'&#233;&#x1F600;\" xml:lang='en'><VERSION>04</VERSION><!-- c --><Description><DescriptionLine>"
        "&#x1F600;&#xE9;&lt;<![CDATA[<x>&amp;]]>&gt;<!-- c -->y</DescriptionLine></Description><Syringe><SyringeSize>10uL"
        "</SyringeSize></Syringe><?p in side?><p:extra xmlns:p='urn:q' p:b=''><a xmlns='urn:d' xmlns:q='urn:q' q:c='1' "
        "p:b='2'><b xmlns=''><c xmlns='urn:d'/></b></a></p:extra><Macros><MacroVariable><MacroValues>WASH(5)</MacroValues>"
        "</MacroVariable></Macros></Method>");
    ASSERT_TRUE(method.documentElement()) << method.parseError().reason;
    services::EmbeddedSignatureV4 component;
    component.sign(method, services::signatureKeyV4(component), "/Method");
    expectIntact(method.xml());
}

TEST_F(RoundTripTest, OfEverySample) {
    std::set<std::string> without;
    for (const auto& folder : fs::directory_iterator(fs::path(VRN_SOURCE_DIR) / "samples")) {
        if (!fs::exists(folder.path() / "methods")) {
            continue;
        }
        const auto load = [&](const char* name) { return loadedFrom(fs::absolute(folder.path() / name), true); };
        set = {load("macros.xml"), load("objects.xml"), nullptr, load("config.xml")};
        for (const auto& method : fs::directory_iterator(folder.path() / "methods")) {
            SCOPED_TRACE(method.path().string());
            const auto name = method.path().stem().string();
            const auto saved = built(editorWith(loadedFrom(fs::absolute(method.path()), true)).Get());
            if (saved != nullptr) {
                expectSurvives(saved);
            } else {
                without.insert(name);
            }
        }
    }
    EXPECT_THAT(without, ::testing::ElementsAre("tampered", "unsigned")) << "methods that are not loaded";
}

}  // namespace vrn::test
