// What the tests of documents share. Uses the port only, so that they run on any back end.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "errors/Error.h"
#include "xml/Dom.h"

namespace vrn::xml::testing {

inline Document loaded(std::string_view text) {
    Document document;
    EXPECT_TRUE(document.loadXML(text)) << text << "\n" << document.parseError().reason;
    return document;
}

/// The text that comes out when this one goes in.
inline std::string reloaded(std::string_view text) { return loaded(text).xml(); }

/// The number of the error that the call fails with, 0 when it does not.
template <typename Call>
int errorOf(Call call) {
    try {
        call();
    } catch (const errors::Error& error) {
        return error.number();
    }
    return 0;
}

/// The names, or texts of nameless nodes, separated by blanks.
inline std::string listed(const std::vector<Node>& nodes) {
    std::string out;
    for (const Node& node : nodes) {
        out += (out.empty() ? "" : " ") + (node.name().front() == '#' ? node.text() : node.name());
    }
    return out;
}

/// A tree as a text in which different trees differ: lengths keep neighbours apart.
class EventRecorder final : public NodeVisitor {
  public:
    std::string events;

    bool startElement(const ElementView& element) override {
        put('<', element.qualifiedName);
        put('{', element.namespaceUri);
        for (const AttributeView& attribute : element.attributes) {
            put('@', attribute.qualifiedName);
            put('{', attribute.namespaceUri);
            put('=', attribute.value);
        }
        return true;
    }
    void endElement(const ElementView& element) override { put('>', element.qualifiedName); }
    void text(std::string_view content) override { put('t', content); }
    void cdata(std::string_view content) override { put('c', content); }
    void comment(std::string_view content) override { put('!', content); }
    void processingInstruction(std::string_view target, std::string_view data) override {
        put('?', target);
        put('=', data);
    }

  private:
    void put(char kind, std::string_view content) {
        events.append(1, kind).append(std::to_string(content.size())).append(1, ':').append(content).append(1, '\n');
    }
};

inline std::string eventsOf(const Node& node) {
    EventRecorder recorder;
    node.accept(recorder);
    return recorder.events;
}

}  // namespace vrn::xml::testing
