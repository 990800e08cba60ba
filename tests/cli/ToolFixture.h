// The tool called as a user calls it, in a folder of its own.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "hosts/cli/Commands.h"
#include "method/Format.h"
#include "method/MethodContent.h"
#include "support/Documents.h"
#include "text/Lists.h"
#include "text/TextFile.h"

namespace vrn::test {

namespace fs = std::filesystem;

/// Of the methods that the tool writes.
inline const std::string currentVersion(method::format::currentVersionText);
/// A text with this version in place of each "@VERSION@".
inline std::string withCurrentVersion(std::string text) {
    return text::replacedAll(std::move(text), "@VERSION@", currentVersion);
}

class ToolFixture : public ::testing::Test {
  protected:
    void SetUp() override {
        std::string pattern = (fs::temp_directory_path() / "vrn-cli-XXXXXX").string();
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        folder = pattern;
        home_ = fs::current_path();
        fs::current_path(folder);
        fs::create_directory(folder / "set");
        fs::create_directory(folder / "methods");
        writeSet("2020");
    }
    void TearDown() override {
        fs::current_path(home_);
        fs::remove_all(folder);
    }

    /// A catalogue of three macros, two syringes. `washDefinitions` of none are the usual ones.
    void writeSet(const std::string& washDate, std::vector<std::string> washDefinitions = {}) {
        if (washDefinitions.empty()) {
            washDefinitions = {"Volume(UL);SYR.Min;SYR.Min;SYR.Max", "Station;WASH_STATION", "Hold Time;0;0;600"};
        }
        write("set/macros.xml", catalogue(macro("WASH", washDefinitions, {"SET_BUSY(Hold Time)"}, washDate) +
                                          macro("COUNT", {"Number;3;1;20"}) + macro("NOTE", {"Text"})));
        write("set/objects.xml", objectList(object("SYRINGE", "10uL", {{"Min", "1"}, {"Max", "10"}}) +
                                            object("SYRINGE", "100uL", {{"Min", "10"}, {"Max", "100"}}) +
                                            object("WASH_STATION", "W1") + object("WASH_STATION", "W2")));
        write("set/config.xml", configuration(category("UL", {"SL.Vol"}) + category("FREE TEXT", {"Ask"})));
    }

    /// A method as the editor writes it with the set.
    std::string signedMethod(const std::vector<std::string>& steps, const std::string& syringe = "10uL",
                             const std::vector<std::string>& description = {"First"}) {
        shell::VRN_MethodEditor editor;
        editor.SetXmlDocuments(read("set/macros.xml"), read("set/objects.xml"), methodText(steps, syringe, description),
                               read("set/config.xml"));
        const auto built = editor.GetMethodXml();
        return built ? built->xml() : std::string();
    }
    void writeMethod(const std::string& name, const std::vector<std::string>& steps,
                     const std::string& syringe = "10uL") {
        write(name, text::encodeXmlFile(signedMethod(steps, syringe)));
    }

    fs::path path(const std::string& name) const { return folder / name; }
    void write(const std::string& name, const std::string& bytes) const {
        std::ofstream(path(name), std::ios::binary) << bytes;
    }
    std::string read(const std::string& name) const {
        std::ifstream file(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    /// The text of an XML file, whatever its encoding.
    std::string text(const std::string& name) const { return text::decodeXmlFile(read(name)); }
    /// The file of an XML text, in the encoding that it declares.
    void writeText(const std::string& name, std::string_view text) const { write(name, text::encodeXmlFile(text)); }
    /// The steps of a method file.
    std::vector<std::string> steps(const std::string& name) const { return method::stepTexts(parsed(text(name))); }

    /// Runs the tool; in its folder. "@NAME" is a name there, "@set" the set's options.
    int run(const std::string& commandLine, const std::string& input = {}) {
        std::vector<std::string> arguments{"vrnmethod"};
        for (const auto& word : text::split(commandLine, " ")) {
            if (word == "@set") {
                arguments.insert(arguments.end(), {"--set", "set"});
            } else {
                arguments.push_back(word.starts_with('@') ? word.substr(1) : word);
            }
        }
        std::istringstream in(input);
        std::ostringstream outStream;
        std::ostringstream errStream;
        const auto status = cli::runTool(arguments, {in, outStream, errStream});
        out = outStream.str();
        err = errStream.str();
        return static_cast<int>(status);
    }

    fs::path folder;
    std::string out;
    std::string err;

  private:
    fs::path home_;
};

}  // namespace vrn::test
