#include "SampleSets.h"

#include "Consistency.h"
#include "DocumentTexts.h"
#include "Files.h"
#include "OddMethods.h"
#include "Writer.h"
#include "text/TextFile.h"
#include "vocabulary/Methods.h"
#include "vocabulary/Vocabulary.h"

namespace vrn::samples {

namespace {

void writeInstallation(const std::filesystem::path& folder, const Installation& installation) {
    writeFile(folder / "macros.xml", macrosText(installation));
    writeFile(folder / "objects.xml", objectsText(installation));
    writeFile(folder / "config.xml", configurationText(installation));
}

void writeMethod(const std::filesystem::path& folder, const std::string& name, const std::string& text) {
    writeFile(folder / "methods" / (name + ".xml"), text::encodeXmlFile(text));
}

}  // namespace

void writeTutorial(const std::filesystem::path& folder) {
    const Installation installation = tutorialInstallation();
    checkTables(installation);
    checkDraft(installation, tutorialMethod());
    const Writer writer(installation);
    writeInstallation(folder, installation);
    writeMethod(folder, "two-steps", writer.method(tutorialMethod(), Writer::LookAt::EveryStep));
}

void writeInstrument(const std::filesystem::path& folder) {
    const Installation installation = instrumentInstallation();
    checkTables(installation);
    checkDraft(installation, simpleMethod());
    checkDraft(installation, multiStepMethod());
    const Writer writer(installation);
    writeInstallation(folder, installation);
    writeMethod(folder, "multi-step-signed", writer.method(multiStepMethod(), Writer::LookAt::EveryStep));
    const std::string simple = writer.method(simpleMethod(), Writer::LookAt::EveryStep);
    writeMethod(folder, "signed", simple);
    for (const OddMethod& odd : oddMethods()) {
        writeMethod(folder, odd.name, odd.make(simple));
    }
}

void writeSetOfSize(const std::filesystem::path& folder, const Sizes& sizes) {
    const Installation installation = installationOfSize(sizes);
    const MethodDraft draft = draftOfSize(installation, sizes);
    checkDraft(installation, draft);
    const Writer writer(installation);
    writeInstallation(folder, installation);
    writeMethod(folder, "steps", writer.method(draft, Writer::LookAt::FirstStep));
}

}  // namespace vrn::samples
