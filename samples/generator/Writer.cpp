#include "Writer.h"

#include <memory>
#include <stdexcept>
#include <utility>

#include "DocumentTexts.h"
#include "services/EmbeddedSignatures.h"
#include "shell/VRN_MethodEditor.h"
#include "xml/Dom.h"

namespace vrn::samples {

namespace {

/// Keeps what the editor had to complain about.
class Complaints final : public errors::MessageBoxService {
  public:
    std::int32_t MessageBoxExA(std::intptr_t /*hWnd*/, const std::string& text, const std::string& /*caption*/,
                               std::int32_t /*flags*/) override {
        add(text);
        return errors::buttonOk;
    }
    errors::ErrorState lastError() override { return {}; }
    void fallback(const std::string& text, const std::string& /*caption*/, std::int32_t /*style*/) override {
        add(text);
    }

    void add(const std::string& text) { texts_ += (texts_.empty() ? "" : "; ") + text; }
    [[nodiscard]] const std::string& texts() const { return texts_; }

  private:
    std::string texts_;
};

/// An editor whose every complaint ends the generator.
class StrictEditor {
  public:
    StrictEditor() : complaints_(std::make_shared<Complaints>()), editor_(services()) {
        editor_.onMethodEditorError([complaints = complaints_](const errors::MethodEditorErrorArguments& arguments) {
            complaints->add(arguments.strProcedure + arguments.strError);
        });
    }

    void load(const std::string& macros, const std::string& objects, const std::string& method,
              const std::string& configuration) {
        editor_.SetXmlDocuments(macros, objects, method, configuration);
        demandSilence("loading");
        if (editor_.state().booCycleDateChanged) {
            throw std::runtime_error("the editor takes a fresh method for outdated");
        }
    }

    std::string write() {
        const auto written = editor_.GetMethodXml();
        demandSilence("writing");
        if (!written) {
            throw std::runtime_error("the editor wrote no method");
        }
        return written->xml();
    }

    void selectEachStep() {
        auto& list = editor_.state().lstMethodMacroList;
        for (int row = 0; row < list.count(); ++row) {
            list.userSelect(row);
            demandSilence("looking at step " + list.item(row));
        }
    }

  private:
    services::Services services() const {
        auto services = services::embeddedServices();
        services.messageBox = complaints_;
        // The samples do not depend on the machine's locale.
        services.locale = std::make_shared<services::FixedLocaleService>(".");
        return services;
    }

    void demandSilence(const std::string& doing) const {
        if (!complaints_->texts().empty()) {
            throw std::runtime_error("when " + doing + " the editor complained: " + complaints_->texts());
        }
    }

    std::shared_ptr<Complaints> complaints_;
    shell::VRN_MethodEditor editor_;
};

/// The editor opens nothing that is not signed.
std::string signedDraft(const MethodDraft& draft) {
    xml::Document document;
    if (!document.loadXML(draftText(draft))) {
        throw std::runtime_error("draft of a method: " + document.parseError().reason);
    }
    services::EmbeddedSignatureV4 component;
    component.sign(document, services::signatureKeyV4(component), "/Method");
    return document.xml();
}

}  // namespace

Writer::Writer(const Installation& installation)
    : macros_(macrosText(installation)),
      objects_(objectsText(installation)),
      configuration_(configurationText(installation)) {}

std::string Writer::method(const MethodDraft& draft, LookAt lookAt) const {
    StrictEditor editor;
    editor.load(macros_, objects_, signedDraft(draft), configuration_);
    std::string written = editor.write();

    StrictEditor another;
    another.load(macros_, objects_, written, configuration_);
    if (another.write() != written) {
        throw std::runtime_error("the editor writes a method it has just read in another way");
    }
    if (lookAt == LookAt::EveryStep) {
        another.selectEachStep();
    }
    return written;
}

}  // namespace vrn::samples
