#include "OddMethods.h"

#include <stdexcept>

#include "services/EmbeddedSignatures.h"
#include "xml/Dom.h"

namespace vrn::samples {

namespace {

xml::Document parsed(const std::string& text) {
    xml::Document document;
    if (!document.loadXML(text)) {
        throw std::runtime_error("sample method: " + document.parseError().reason);
    }
    return document;
}

xml::Node found(const xml::Document& document, const std::string& path) {
    xml::Node node = document.selectSingleNode(path);
    if (!node) {
        throw std::runtime_error("sample method: nothing at " + path);
    }
    return node;
}

void removeSignature(const xml::Document& document) {
    const xml::Node method = document.documentElement();
    const xml::Node signature = method.lastChild();
    if (!signature || signature.name() != "Signature") {
        throw std::runtime_error("sample method: no signature at the end");
    }
    method.removeChild(signature);
}

std::string signedAgain(xml::Document document) {
    removeSignature(document);
    services::EmbeddedSignatureV4 component;
    component.sign(document, services::signatureKeyV4(component), "/Method");
    return document.xml();
}

/// As methods before version 4 were signed. They carried no timing identifier.
std::string signedTheOldWay(const xml::Document& document) {
    removeSignature(document);
    const xml::Node method = document.documentElement();
    method.removeAttribute("TimingInformationID");
    const xml::Node signature = document.createElement("Signature");
    signature.setText(services::EmbeddedSignatureV23().signatureFor(document));
    (void)method.appendChild(signature);
    return document.xml();
}

std::string withVersion(const std::string& good, const char* version) {
    const xml::Document document = parsed(good);
    found(document, "/Method/VERSION").setText(version);
    return signedTheOldWay(document);
}

std::string tampered(const std::string& good) {
    const xml::Document document = parsed(good);
    const xml::Node step = found(document, "/Method/Macros/MacroVariable/MacroValues").nextOfSameName();
    std::string text = step.text();
    // The volume of the transfer: still in range, so that nothing but the signature tells.
    const std::size_t volume = text.find(",25,");
    if (volume == std::string::npos) {
        throw std::runtime_error("sample method: the volume to tamper with is not there");
    }
    step.setText(text.replace(volume, 4, ",52,"));
    return document.xml();
}

std::string unsignedMethod(const std::string& good) {
    const xml::Document document = parsed(good);
    removeSignature(document);
    return document.xml();
}

std::string version02(const std::string& good) { return withVersion(good, "02"); }

std::string version03(const std::string& good) { return withVersion(good, "03"); }

std::string version05(const std::string& good) {
    const xml::Document document = parsed(good);
    found(document, "/Method/VERSION").setText("05");
    return signedAgain(document);
}

std::string noVersion(const std::string& good) {
    const xml::Document document = parsed(good);
    document.documentElement().removeChild(found(document, "/Method/VERSION"));
    return signedTheOldWay(document);
}

std::string unknownCycle(const std::string& good) {
    const xml::Document document = parsed(good);
    const xml::Node step = found(document, "/Method/Macros/MacroVariable/MacroValues").nextOfSameName();
    std::string text = step.text();
    step.setText("PIPETTE" + text.substr(text.find('(')));
    const xml::Node embedded = found(document, "/Method/Macros/MacroData/MacroName").nextOfSameName();
    embedded.setText("[MACRO PIPETTE]");
    return signedAgain(document);
}

std::string unknownSyringe(const std::string& good) {
    const xml::Document document = parsed(good);
    found(document, "/Method/Syringe/SyringeSize").setText("50uL");
    return signedAgain(document);
}

std::string outdated(const std::string& good) {
    const xml::Document document = parsed(good);
    document.documentElement().setAttribute("LastModifiedTimestamp", "2016-05-09T16:20:00");
    return signedAgain(document);
}

}  // namespace

std::vector<OddMethod> oddMethods() {
    return {{"tampered", tampered},          {"unsigned", unsignedMethod},        {"version-02", version02},
            {"version-03", version03},       {"version-05", version05},           {"no-version", noVersion},
            {"unknown-cycle", unknownCycle}, {"unknown-syringe", unknownSyringe}, {"outdated", outdated}};
}

}  // namespace vrn::samples
