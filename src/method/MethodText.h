// Texts of the method document: its declaration, the empty method, escaping, and the report of a parse error.
#pragma once

#include <string>
#include <string_view>

#include "xml/Dom.h"

namespace vrn::method {

inline constexpr std::string_view methodDeclaration = R"(<?xml version="1.0" encoding="UTF-16"?>)";

/// The method that stands for none, with declaration.
[[nodiscard]] std::string emptyMethodTemplate();

/// "&", "<", ">", double quote and apostrophe as entities.
[[nodiscard]] std::string ConvertDescription(std::string text);
/// The five entities as their characters.
[[nodiscard]] std::string ReverseDescription(std::string text);

/// The seven lines that tell the user why a document could not be parsed, under a heading.
[[nodiscard]] std::string parseErrorReport(std::string_view heading, const xml::ParseError& error);

}  // namespace vrn::method
