#include "hosts/sample/MethodFile.h"

#include <utility>

#include "hosts/sample/script/XmlText.h"

namespace vrn::sample {

void MethodFile::load(const DocumentSet& set, IDispatch* method) {
    control_.SetXmlDocuments(set.macros.Get(), set.objects.Get(), method, set.config.Get());
    path_.clear();
    reference_.clear();
    knownAsChanged_ = false;
}

void MethodFile::openSet(const std::wstring& folder) {
    auto set = loadDocumentSet(folder);
    load(set, nullptr);
    set_ = std::move(set);
}

void MethodFile::startNew() { load(set_, nullptr); }

bool MethodFile::open(const std::wstring& path) {
    const auto method = loadDocument(path);
    const int errorsBefore = errors_;
    load(set_, method.Get());
    // A method that failed its verification keeps its file to itself: saving must not put the empty method over it.
    const bool accepted = errors_ == errorsBefore;
    if (accepted) {
        path_ = path;
        reference_ = textOf(method.Get());
    }
    return accepted;
}

bool MethodFile::isChanged() {
    knownAsChanged_ = set_.loaded() && control_.MethodIsChanged();
    return knownAsChanged_;
}

// snippet: save
// What the control compares with follows `GetMethodXml` from its second call on, or from the first one after the property
// was set to True. False puts that off: the next call leaves the comparison alone.
com::ComPtr<IDispatch> MethodFile::build() {
    control_.MethodIsChanged(false);
    return control_.GetMethodXml();
}

bool MethodFile::save(const std::wstring& path) {
    const auto method = build();
    if (method == nullptr) {
        return false;
    }
    saveDocument(method.Get(), path);
    // Only what is safely in the file becomes what later changes are measured against.
    control_.MethodIsChanged(true);
    static_cast<void>(control_.GetMethodXml());
    path_ = path;
    reference_ = textOf(method.Get());
    knownAsChanged_ = false;
    return true;
}
// end of snippet

}  // namespace vrn::sample
