// One editor per thread of the tool, its document set loaded once.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "hosts/cli/Call.h"
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

class Engine {
  public:
    /// An editor without documents: signatures can be looked at.
    Engine();
    /// An editor with the set and no method yet. Throws `Fault` when a document is not well-formed or not what it should be, or when
    /// the editor reports something else of the set.
    explicit Engine(const SetTexts& set);

    [[nodiscard]] shell::VRN_MethodEditor& editor() noexcept { return *editor_; }
    [[nodiscard]] method::EditorState& state() noexcept { return editor_->state(); }
    /// Loads another method with the same set.
    void load(const std::string& method);
    /// What the editor reported to its user or its host since this was last called, each as one line.
    [[nodiscard]] std::vector<std::string> takeReports();

  private:
    explicit Engine(const std::string& decimalSeparator);

    std::unique_ptr<std::vector<std::string>> reports_;
    std::unique_ptr<shell::VRN_MethodEditor> editor_;
};

}  // namespace vrn::cli
