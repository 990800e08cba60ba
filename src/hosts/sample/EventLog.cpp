#include "hosts/sample/EventLog.h"

#include <array>

namespace vrn::sample {

namespace {

std::wstring now() {
    std::array<wchar_t, 32> text{};
    GetTimeFormatW(LOCALE_USER_DEFAULT, 0, nullptr, L"HH':'mm':'ss", text.data(), static_cast<int>(text.size()));
    return text.data();
}

// Numbers of COM are known by their hexadecimal form.
std::wstring numberText(long number) {
    std::array<wchar_t, 16> text{};
    if (number >= 0) {
        return std::to_wstring(number);
    }
    wsprintfW(text.data(), L"0x%08X", static_cast<unsigned>(number));
    return text.data();
}

}  // namespace

void EventLog::create(HWND parent, int id) {
    ListView::create(parent, id, L"Events", {{L"Time", 70}, {L"Number", 90}, {L"Procedure", 150}, {L"Text", 300}});
}

void EventLog::add(const MethodEditorError& error) const {
    addRow({now(), numberText(error.lngError), error.strProcedure, error.strError});
    showLastRow();
}

void EventLog::note(const std::wstring& what) const {
    addRow({now(), L"", L"", what});
    showLastRow();
}

}  // namespace vrn::sample
