// One editor per thread of the tool, its document set loaded once.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "hosts/cli/Console.h"
#include "shell/VRN_MethodEditor.h"

namespace vrn::cli {

/// Where the documents around the methods are, as the call names them.
struct SetArguments {
    std::string folder;
    std::string macros;
    std::string objects;
    std::string config;
    std::string decimalSeparator = ".";

    /// Whether the call names a set at all.
    [[nodiscard]] bool given() const {
        return !(folder.empty() && macros.empty() && objects.empty() && config.empty());
    }
};

/// The texts of a document set, shared by all editors.
struct SetTexts {
    std::string macros;
    std::string objects;
    std::string configuration;
    std::string decimalSeparator;
    std::vector<std::string> files;  ///< the paths of the three
};

/// Reads the three documents. Throws `Fault` when the call does not name all of them or one of them cannot be read.
[[nodiscard]] SetTexts readSet(const SetArguments& arguments, const Console& console);

/// What the editor said to its user or to its host.
struct Report {
    std::string text;
    int number = 0;         ///< of an error event; 0 for a message
    std::string procedure;  ///< of an error event
};

class Engine {
  public:
    /// An editor without documents: signatures can be looked at.
    Engine();
    /// An editor with the set and no method yet. Throws `Fault` when a document is not well-formed or not what it should be, or when
    /// the editor has something else to say against the set.
    explicit Engine(const SetTexts& set);

    [[nodiscard]] shell::VRN_MethodEditor& editor() noexcept { return *editor_; }
    [[nodiscard]] method::EditorState& state() noexcept { return editor_->state(); }
    /// Loads another method with the same set.
    void load(const std::string& method);
    /// What was reported since this was last asked.
    [[nodiscard]] std::vector<Report> takeReports();

  private:
    explicit Engine(const std::string& decimalSeparator);

    std::unique_ptr<std::vector<Report>> reports_;
    std::unique_ptr<shell::VRN_MethodEditor> editor_;
};

/// A report as one line.
[[nodiscard]] std::string oneLine(const Report& report);

}  // namespace vrn::cli
