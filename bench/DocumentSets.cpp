#include "DocumentSets.h"

#include <map>

#include "DocumentTexts.h"
#include "Installations.h"
#include "Writer.h"

namespace vrn::bench {

namespace {

samples::Sizes sizesOf(Dimension dimension, std::size_t size) {
    samples::Sizes sizes;
    switch (dimension) {
        case Dimension::Macros:
            sizes.macros = size;
            break;
        case Dimension::Objects:
            sizes.objects = size;
            break;
        case Dimension::Names:
            sizes.names = size;
            break;
        case Dimension::Steps:
            sizes.steps = size;
            break;
        case Dimension::DescriptionLines:
            sizes.descriptionLines = size;
            break;
    }
    return sizes;
}

DocumentSet make(Dimension dimension, std::size_t size) {
    const auto sizes = sizesOf(dimension, size);
    const auto installation = samples::installationOfSize(sizes);
    return {samples::macrosText(installation), samples::objectsText(installation),
            samples::configurationText(installation),
            samples::Writer(installation)
                .method(samples::draftOfSize(installation, sizes), samples::Writer::LookAt::FirstStep)};
}

}  // namespace

const DocumentSet& documentSet(Dimension dimension, std::size_t size) {
    static std::map<std::pair<Dimension, std::size_t>, DocumentSet> made;
    const auto key = std::pair(dimension, size);
    auto found = made.find(key);
    if (found == made.end()) {
        found = made.emplace(key, make(dimension, size)).first;
    }
    return found->second;
}

}  // namespace vrn::bench
