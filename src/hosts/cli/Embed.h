// A method of today's form: the catalogue's cycles embedded, values kept by their parameters' names, version 04, signed.
#pragma once

#include <string>
#include <vector>

#include "hosts/cli/Checker.h"
#include "hosts/cli/MethodRun.h"
#include "method/CycleUpdate.h"

namespace vrn::cli {

/// What one command wants of a method before it is written anew.
enum class EmbedPurpose { Update, Convert };

struct EmbedArguments {
    SetArguments set;
    MethodArguments methods;
    WriteArguments write;
};

class Embedder {
  public:
    Embedder(const Console& console, const EmbedArguments& arguments, const SetTexts& set, EmbedPurpose purpose)
        : console_(&console), arguments_(&arguments), checker_(set), purpose_(purpose) {}

    [[nodiscard]] Outcome embed(const MethodFile& file);

  private:
    struct Report {
        const char* status;
        std::string words;
        std::vector<method::ValueChange> changes;
        std::vector<Finding> findings;
    };

    /// Why the method is not to be written anew; empty when it is.
    [[nodiscard]] std::string objection(const method::Inspection& inspection) const;
    [[nodiscard]] bool isWanted(const method::Inspection& inspection) const;
    [[nodiscard]] Outcome rewrite(const MethodToWrite& method);
    void tellReport(const XmlFile& file, Outcome& outcome, const Report& report) const;

    const Console* console_;
    const EmbedArguments* arguments_;
    Checker checker_;
    EmbedPurpose purpose_;
};

/// Runs the command over all methods.
[[nodiscard]] ExitStatus embedMethods(const Console& console, const EmbedArguments& arguments, EmbedPurpose purpose);

}  // namespace vrn::cli
