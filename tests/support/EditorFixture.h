// A whole editor whose message boxes and error events are recorded. Tests drive its child controls through `state()`.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "services/LocaleService.h"
#include "services/Services.h"
#include "shell/VRN_MethodEditor.h"
#include "support/Documents.h"
#include "support/Services.h"

namespace vrn::test {

class EditorFixture : public ::testing::Test {
  protected:
    /// `decimalSeparator` is that of the user's locale.
    explicit EditorFixture(std::string decimalSeparator = ".")
        : editor_(std::make_unique<shell::VRN_MethodEditor>(servicesWith(std::move(decimalSeparator)))) {
        editor_->onMethodEditorError(
            [this](const errors::MethodEditorErrorArguments& arguments) { errors.push_back(arguments); });
    }

    [[nodiscard]] shell::VRN_MethodEditor& editor() { return *editor_; }
    [[nodiscard]] method::EditorState& state() { return editor_->state(); }

    void load(const DocumentTexts& texts) {
        editor_->SetXmlDocuments(texts.macros, texts.objectList, texts.method, texts.configuration);
    }

    /// One text per reported error, "number procedure|description", so that a whole list compares at once.
    [[nodiscard]] std::vector<std::string> errorTexts() const {
        std::vector<std::string> texts;
        for (const auto& error : errors) {
            texts.push_back(std::to_string(error.lngError) + " " + error.strProcedure + "|" + error.strError);
        }
        return texts;
    }
    [[nodiscard]] std::vector<std::string> boxTexts() const {
        std::vector<std::string> texts;
        for (const auto& shown : box->shown) {
            texts.push_back(shown.text);
        }
        return texts;
    }

    /// The value column of the grid, without the header.
    [[nodiscard]] std::vector<std::string> gridValues() { return gridColumn(1); }
    [[nodiscard]] std::vector<std::string> gridNames() { return gridColumn(0); }

    std::shared_ptr<RecordingMessageBox> box = std::make_shared<RecordingMessageBox>();
    std::shared_ptr<TableInstrumentService> instrument = std::make_shared<TableInstrumentService>();
    std::vector<errors::MethodEditorErrorArguments> errors;

  private:
    services::Services servicesWith(std::string decimalSeparator) {
        auto services = services::embeddedServices();
        services.messageBox = box;
        services.instrument = instrument;
        services.locale = std::make_shared<services::FixedLocaleService>(std::move(decimalSeparator));
        return services;
    }
    std::vector<std::string> gridColumn(int column) {
        std::vector<std::string> texts;
        for (int row = 1; row < state().grdMacro.rowCount(); ++row) {
            texts.push_back(state().grdMacro.cellText(row, column));
        }
        return texts;
    }

    std::unique_ptr<shell::VRN_MethodEditor> editor_;
};

}  // namespace vrn::test
