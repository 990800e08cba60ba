#include "hosts/activex/form/FormMeasures.h"

#include <string>

#include "hosts/activex/form/Metrics.h"
#include "text/windows/Wide.h"

namespace vrn::activex {

namespace {

int noticeHeight(HDC context, int width, const std::string& notice) {
    auto text = text::toWide(notice);
    RECT size{0, 0, width, 0};
    DrawTextW(context, text.data(), static_cast<int>(text.size()), &size,
              DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX | DT_EDITCONTROL);
    return size.bottom;
}

}  // namespace

LayoutInput measuredTexts(HDC context, const SIZE& client, const Look& look, const method::EditorState& state) {
    const Selected font(context, look.font);
    LayoutInput input;
    input.width = client.cx;
    input.height = client.cy;
    input.dpi = look.dpi;
    input.textHeight = textSize(context, look.font).lineHeight;
    input.initialCycle = state.cmdDefCycle.visible();
    if (state.lblCycleDateChanged.visible()) {
        input.noticeHeight =
            noticeHeight(context, noticeWidth(client.cx, look.dpi), state.lblCycleDateChanged.caption());
    }
    const auto measure = [&](ControlId id, const std::string& caption) {
        input.captions[indexOf(id)] = captionWidth(context, text::toWide(caption));
    };
    measure(ControlId::fraMethodDescription, state.fraMethodDescription.caption());
    measure(ControlId::fraSyringe, state.fraSyringe.caption());
    measure(ControlId::fraMacroSequence, state.fraMacroSequence.caption());
    measure(ControlId::fraAvailableCycles, state.fraAvailableCycles.caption());
    measure(ControlId::cmdInsert, state.cmdInsert.caption());
    measure(ControlId::cmdReplace, state.cmdReplace.caption());
    measure(ControlId::cmdDelete, state.cmdDelete.caption());
    measure(ControlId::cmdDefCycle, state.cmdDefCycle.caption());
    return input;
}

}  // namespace vrn::activex
