#include "vocabulary/Methods.h"

namespace vrn::samples {

MethodDraft tutorialMethod() {
    return {"10uL",
            {"My first method: wash, then inject 2 microlitres."},
            {{"WASH", {"Wash 1", "3"}}, {"LIQUID", {"Tray 1", "1", "2", "0"}}}};
}

MethodDraft simpleMethod() {
    return {"100uL",
            {"Mix, transfer, wash."},
            {
                {"AGITATE", {"Agitator 1", "500", "60", "40", "30"}},
                {"TRANSFER", {"Tray 1", "1", "Rack 1", "1", "25", "1", "0"}},
                {"WASH", {"Fast Wash", "3"}},
            }};
}

MethodDraft multiStepMethod() {
    return {"10uL",
            {
                "Stérols dans l'huile d'olive, dérivés au MSTFA & injectés à froid",
                "Internal standard: 5α-cholestane, c < 0.1 g/L, \"lot 2024/7\"",
                "",
                "Prüfer: Müller   (QC > 3 bestanden)",
            },
            {
                {"CHANGE TOOL", {"10uL"}},
                {"WASH-SOLVENT", {"Acetone", "3", "Hexane", "2", "8", "5"}},
                {"INTERNAL STD", {"Standards", "1", "SL.MyTray", "SL.SampleIndex", "2.5"}},
                {"DERIVATIZE",
                 {"SL.MyTray", "SL.SampleIndex", "MSTFA", "10", "Agitator 2", "70", "SL.ReactionTime", "Methanol", "0",
                  "120"}},
                {"WAIT OVERLAP", {"15"}},
                {"LIQUID-INJ",
                 {"10uL", "SL.MyTray", "SL.SampleIndex", "SL.InjVolume", "1", "Wash 1", "4", "2", "5", "5", "2",
                  "Front PTV", "40", "50", "SL.Dwell", "MSD", "SL.Lösemittel", "6"}},
                {"WASH", {"Wash 2", "20"}},
                {"LIQUID-INJ",
                 {"10uL", "Blanks", "1", "1", "0", "Wash 1", "2", "0", "3", "5", "1", "Front PTV", "40", "100", "0",
                  "MSD", "SL.FastWash", "3"}},
                {"REMARK", {"blank after each sample"}},
                {"PARK", {}},
            }};
}

}  // namespace vrn::samples
