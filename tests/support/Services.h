// Services that stand in for a host's installation.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "errors/modMsgBox.h"
#include "services/InstrumentService.h"
#include "text/Ansi.h"

namespace vrn::test {

struct ShownBox {
    std::string text;  ///< UTF-8
    std::string caption;
    std::int32_t style = 0;
};

/// Records the boxes it is asked to show and answers `button`. What happens while a box is open goes into `whileShown`.
class RecordingMessageBox final : public errors::MessageBoxService {
  public:
    std::int32_t MessageBoxExA(std::intptr_t /*hWnd*/, const std::string& text, const std::string& caption,
                               std::int32_t flags) override {
        shown.push_back({text::fromAnsi(text), text::fromAnsi(caption), flags});
        if (const auto act = std::exchange(whileShown, nullptr)) {
            act();
        }
        return button;
    }
    errors::ErrorState lastError() override { return error; }
    void fallback(const std::string& text, const std::string& caption, std::int32_t style) override {
        fallbacks.push_back({text, caption, style});
    }

    std::vector<ShownBox> shown;
    std::vector<ShownBox> fallbacks;
    std::int32_t button = errors::buttonOk;
    errors::ErrorState error;
    std::function<void()> whileShown;  ///< runs once, inside the next box
};

/// Answers from its tables and records the codes it was asked about.
class TableInstrumentService final : public services::InstrumentService {
  public:
    void UnitInfo(const std::string& unitCode, std::string& unitText, std::int32_t& unitFactor) override {
        asked.push_back("UnitInfo " + unitCode);
        if (const auto found = units.find(unitCode); found != units.end()) {
            unitText = unitCode;
            unitFactor = found->second;
        }
    }
    void UnitPair(const std::string& code, std::string& first, std::string& second) override {
        asked.push_back("UnitPair " + code);
        if (const auto found = pairs.find(code); found != pairs.end()) {
            first = found->second;
            second = "second";
        }
    }
    std::optional<std::vector<std::string>> ObjectNames(const std::string& key) override {
        const auto found = names.find(key);
        return found == names.end() ? std::nullopt : std::optional(found->second);
    }

    std::map<std::string, std::int32_t> units;
    std::map<std::string, std::string> pairs;
    std::map<std::string, std::vector<std::string>> names;
    std::vector<std::string> asked;
};

}  // namespace vrn::test
