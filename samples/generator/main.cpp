// vrn-make-samples: writes document sets for the editor.
#include <CLI/CLI.hpp>

#include <exception>
#include <iostream>
#include <string>

#include "SampleSets.h"

namespace {

struct Wishes {
    std::string folder;
    bool tutorial = false;
    bool instrument = false;
    vrn::samples::Sizes sizes;
};

void addOptions(CLI::App& app, Wishes& wishes) {
    app.add_option("--out", wishes.folder, "Folder to write to; files of the same name are replaced")->required();
    auto* const tutorial = app.add_flag("--tutorial", wishes.tutorial, "The small set of samples/tutorial");
    auto* const instrument = app.add_flag("--instrument", wishes.instrument, "The set of samples/instrument");
    tutorial->excludes(instrument);

    const CLI::Range fromOne(1, 1'000'000);
    const CLI::Range fromNone(0, 1'000'000);
    auto& sizes = wishes.sizes;
    for (CLI::Option* const option :
         {app.add_option("--macros", sizes.macros, "Macros in the catalogue")->check(fromOne),
          app.add_option("--objects", sizes.objects, "Objects in the object list; the first is a syringe")
              ->check(fromOne),
          app.add_option("--names", sizes.names, "User-defined names in the configuration")->check(fromNone),
          app.add_option("--steps", sizes.steps, "Steps of methods/steps.xml")->check(fromOne),
          app.add_option("--description-lines", sizes.descriptionLines, "Lines of its description")->check(fromNone),
          app.add_option("--seed", sizes.seed, "Another seed draws other values")}) {
        option->group("Sets of any size")->capture_default_str()->excludes(tutorial)->excludes(instrument);
    }
}

void write(const Wishes& wishes) {
    if (wishes.tutorial) {
        vrn::samples::writeTutorial(wishes.folder);
    } else if (wishes.instrument) {
        vrn::samples::writeInstrument(wishes.folder);
    } else {
        vrn::samples::writeSetOfSize(wishes.folder, wishes.sizes);
    }
}

}  // namespace

int main(int argc, char** argv) {
    try {
        CLI::App app("Writes a document set: catalogues and signed methods. The same options give the same bytes.");
        Wishes wishes;
        addOptions(app, wishes);
        CLI11_PARSE(app, argc, argv);
        write(wishes);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "vrn-make-samples: " << error.what() << '\n';
        return 1;
    }
}
