// What a laboratory's installation hands to the editor, as plain data: the documents of a sample set are written from it.
#pragma once

#include <string>
#include <vector>

namespace vrn::samples {

/// A cycle of the catalogue. `definitions` are parameter definitions in the catalogue's own grammar.
struct Macro {
    std::string name;
    std::vector<std::string> description;
    std::vector<std::string> atoms;
    std::vector<std::string> definitions;
    std::string lastModified = {};
};

struct Property {
    std::string name;
    std::string value;
};

struct Object {
    std::string type;
    std::string name;
    std::vector<Property> properties;
};

/// An elementary command that the cycles' atom lines call.
struct Atom {
    std::string name;
    std::vector<std::string> parameters;
};

/// User-defined names of one category: an object type, "FREE TEXT", a unit code or "None".
struct NameGroup {
    std::string key;
    std::vector<std::string> names;
};

struct Installation {
    std::vector<Macro> macros;
    std::vector<Object> objects;
    std::vector<Atom> atoms;
    std::vector<NameGroup> names;
};

/// One step of a method: a cycle and the values of its parameters, in the order of its definitions.
struct Step {
    std::string macro;
    std::vector<std::string> values;
};

/// A method before the editor has written it.
struct MethodDraft {
    std::string syringe;
    std::vector<std::string> description;
    std::vector<Step> steps;
};

}  // namespace vrn::samples
