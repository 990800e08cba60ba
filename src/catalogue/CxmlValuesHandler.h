// The catalogue parser: lists of objects, atoms and user-defined names, and the units that macros use.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/Indexes.h"
#include "catalogue/ParameterDefinition.h"
#include "catalogue/SharedLists.h"
#include "controls/Choices.h"
#include "services/Services.h"
#include "xml/Dom.h"

namespace vrn::catalogue {

/// Whether a parameter type names an object type: not empty, and "A" to "Z" and "_" only.
[[nodiscard]] bool ItIsObject(std::string_view text) noexcept;

/// Failures go to the caller with a source that names the procedure.
class CxmlValuesHandler {
  public:
    /// `services` must outlive the handler; its instrument service is asked anew on every call.
    explicit CxmlValuesHandler(const services::Services& services) : services_(&services) {}

    /// Kind 1: the names of the objects of the type `key`, then those that the configuration has for it, then the free-text names,
    /// as a list text. Kind 2: the parameter lines of the atom `key`, each followed by CR LF. Otherwise empty.
    [[nodiscard]] std::string RetrieveValues(std::int16_t kind, const xml::Document& objectList,
                                             const xml::Document& configuration, const std::string& key);

    /// What `RetrieveValues` gives for each of these object types, each list once, as the entries of a drop-down list. Whoever asks
    /// again shares the entries, as long as nothing has changed that they are made of.
    [[nodiscard]] std::shared_ptr<const controls::Choices> objectChoices(const xml::Document& objectList,
                                                                         const xml::Document& configuration,
                                                                         std::span<const std::string> types);

    /// Units, then object types, of the parameters of the named macros, as a list text; the separator between the two is always
    /// there.
    [[nodiscard]] std::string UnitsInOneMacro(const std::string& macroNames, const xml::Document& catalogue);

    /// The user-defined names of a key: the instrument service's, then those of the configuration that the last `RetrieveValues`
    /// was given.
    [[nodiscard]] std::string SLObject(const std::string& key);

    /// A list with repeated items moved to its end. Repetition is told by substring, and lists that do not end with ";" give what
    /// they have always given.
    [[nodiscard]] static std::string CleanRepetition(const std::string& list);

    /// Look-ups over a document, kept until another document is asked about.
    [[nodiscard]] const MacroIndex& macros(const xml::Document& catalogue);
    [[nodiscard]] const ObjectListIndex& objects(const xml::Document& objectList);
    [[nodiscard]] const ArgumentsIndex& configuration(const xml::Document& configuration);
    [[nodiscard]] const ArgumentsIndex& baselineArguments(const xml::Document& method);
    /// Lets go of a document and all that was looked up in it.
    void forget(const xml::Document& document);
    /// `SLObject` answers without documents until the next `RetrieveValues`.
    void forgetLastQuestion();

  private:
    template <typename Index>
    struct Kept {
        xml::Document document;
        std::optional<Index> index;
    };
    template <typename Index, typename Make>
    const Index& keep(Kept<Index>& kept, const xml::Document& document, Make&& make);

    /// The names that the instrument service and the configuration have for a key: what they are made of.
    struct UserDefined {
        std::vector<std::string> own;
        xml::Document configuration;
        [[nodiscard]] bool operator==(const UserDefined& other) const {
            return configuration.sameAs(other.configuration) && own == other.own;
        }
    };

    /// Takes the documents as those that are meant from now on. No names for an empty type.
    TypeNames retrieve(const xml::Document& objectList, const xml::Document& configuration, const std::string& type);
    SharedText userDefined(const std::string& key);
    std::string userDefinedText(const std::string& key, const UserDefined& parts);
    static std::string atomText(const xml::Document& objectList, const std::string& atom);
    /// The unit of a value parameter; "()" stands for the instrument's standard unit.
    [[nodiscard]] std::string unitOf(const ParameterDefinition& definition) const;
    /// Adds the units of a macro's parameters to the units list, and their object types to `types`.
    void collectUnits(const xml::Node& macro, std::string& types);

    const services::Services* services_;
    xml::Document objectList_;
    xml::Document configuration_;
    std::string unitsList_;
    Kept<MacroIndex> macros_;
    Kept<ObjectListIndex> objects_;
    Kept<ArgumentsIndex> arguments_;
    Kept<ArgumentsIndex> baseline_;
    MadeOnce<UserDefined, std::string> userDefined_;
    MadeOnce<std::vector<TypeNames>, controls::Choices> choices_;
};

}  // namespace vrn::catalogue
