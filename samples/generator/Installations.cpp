#include "Installations.h"

#include <map>
#include <string>

#include "Random.h"
#include "StepMaker.h"
#include "vocabulary/Vocabulary.h"

namespace vrn::samples {

namespace {

void append(std::vector<Macro>& macros, std::vector<Macro> more) {
    macros.insert(macros.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

std::string twoDigits(std::size_t number) { return (number < 10 ? "0" : "") + std::to_string(number); }

/// Moments when somebody last changed each cycle: working hours of a few years.
void stamp(std::vector<Macro>& macros, std::uint64_t seed) {
    Random random(seed);
    for (Macro& macro : macros) {
        macro.lastModified = std::to_string(2019 + random.below(5)) + "-" + twoDigits(1 + random.below(12)) + "-" +
                             twoDigits(1 + random.below(28)) + "T" + twoDigits(7 + random.below(11)) + ":" +
                             twoDigits(random.below(60)) + ":" + twoDigits(random.below(60));
    }
}

std::vector<Macro> macrosOfSize(const std::vector<Macro>& base, std::size_t count) {
    std::vector<Macro> macros;
    macros.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        macros.push_back(base[i % base.size()]);
        if (const std::size_t round = i / base.size(); round > 0) {
            macros.back().name += " " + std::to_string(round + 1);
        }
    }
    return macros;
}

/// The items of all groups, one of each group in turn until all are taken.
template <typename Item>
std::vector<Item> inTurn(const std::vector<std::vector<Item>>& groups) {
    std::vector<Item> items;
    for (std::size_t rank = 0, before = 1; before > 0; ++rank) {
        before = 0;
        for (const std::vector<Item>& group : groups) {
            if (rank < group.size()) {
                items.push_back(group[rank]);
                ++before;
            }
        }
    }
    return items;
}

std::vector<Object> objectsOfSize(const std::vector<Object>& base, std::size_t count) {
    std::map<std::string, std::size_t> groupOfType;
    std::vector<std::vector<Object>> groups;
    for (const Object& object : base) {
        const auto [found, isNew] = groupOfType.emplace(object.type, groups.size());
        if (isNew) {
            groups.emplace_back();
        }
        groups[found->second].push_back(object);
    }
    const std::vector<Object> ordered = inTurn(groups);
    std::vector<Object> objects;
    objects.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        objects.push_back(ordered[i % ordered.size()]);
        if (const std::size_t round = i / ordered.size(); round > 0) {
            objects.back().name += "/" + std::to_string(round + 1);
        }
    }
    return objects;
}

std::vector<NameGroup> namesOfSize(const std::vector<NameGroup>& base, std::size_t count) {
    struct Named {
        std::size_t group;
        std::string name;
    };
    std::vector<std::vector<Named>> groups;
    std::vector<NameGroup> result;
    for (const NameGroup& group : base) {
        std::vector<Named>& names = groups.emplace_back();
        for (const std::string& name : group.names) {
            names.push_back({result.size(), name});
        }
        result.push_back({group.key, {}});
    }
    const std::vector<Named> ordered = inTurn(groups);
    for (std::size_t i = 0; i < count; ++i) {
        const Named& named = ordered[i % ordered.size()];
        const std::size_t round = i / ordered.size();
        result[named.group].names.push_back(round == 0 ? named.name : named.name + std::to_string(round + 1));
    }
    return result;
}

std::string descriptionLine(std::size_t number, Random& random) {
    static const std::vector<std::string> subjects = {"Residues in honey & pollen",
                                                      "Résidus de solvants",
                                                      "Aroma of \"green\" coffee",
                                                      "Phenole im Grundwasser",
                                                      "Sterols, derivatised with <MSTFA>",
                                                      "Volatiles of Cox's apple",
                                                      "Ethanol in blood",
                                                      "水中の農薬"};
    static const std::vector<std::string> remarks = {"LOD < 5 µg/kg", "r² > 0.995", "see SOP 12", "checked twice",
                                                     "à vérifier"};
    return std::to_string(number) + ": " + subjects[random.below(subjects.size())] + ", " +
           remarks[random.below(remarks.size())];
}

}  // namespace

Installation instrumentInstallation() {
    Installation installation;
    append(installation.macros, liquidMacros());
    append(installation.macros, headspaceMacros());
    append(installation.macros, spmeMacros());
    append(installation.macros, preparationMacros());
    append(installation.macros, handlingMacros());
    append(installation.macros, controlMacros());
    stamp(installation.macros, 1);
    installation.objects = instrumentObjects();
    installation.atoms = instrumentAtoms();
    installation.names = instrumentNames();
    return installation;
}

Installation installationOfSize(const Sizes& sizes) {
    Installation installation = instrumentInstallation();
    installation.macros = macrosOfSize(installation.macros, sizes.macros);
    stamp(installation.macros, sizes.seed);
    installation.objects = objectsOfSize(installation.objects, sizes.objects);
    installation.names = namesOfSize(installation.names, sizes.names);
    return installation;
}

MethodDraft draftOfSize(const Installation& installation, const Sizes& sizes) {
    // Of its own, so that a larger catalogue does not change the order in which values are drawn.
    Random random(sizes.seed ^ 0x5EED5EED5EED5EEDULL);
    std::vector<std::string> syringes;
    for (const Object& object : installation.objects) {
        if (object.type == "SYRINGE") {
            syringes.push_back(object.name);
        }
    }
    MethodDraft draft;
    draft.syringe = syringes[random.below(syringes.size())];
    for (std::size_t i = 0; i < sizes.descriptionLines; ++i) {
        draft.description.push_back(descriptionLine(i + 1, random));
    }
    StepMaker maker(installation, draft.syringe, random);
    draft.steps.reserve(sizes.steps);
    for (std::size_t i = 0; i < sizes.steps; ++i) {
        draft.steps.push_back(maker.step());
    }
    return draft;
}

}  // namespace vrn::samples
