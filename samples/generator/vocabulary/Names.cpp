// The names that the laboratory has given to objects and values.
#include "vocabulary/Vocabulary.h"

namespace vrn::samples {

std::vector<NameGroup> instrumentNames() {
    return {
        {"TRAY", {"SL.MyTray", "SL.LastTray", "SL.SampleTray", "SL.Probenteller", "Guest Tray"}},
        {"VIAL_RACK", {"SL.StandardRack", "SL.QCRack", "Spare Rack"}},
        {"STACK", {"SL.ColdDrawer"}},
        {"INJECTOR", {"SL.Inlet"}},
        {"WASH_STATION", {"SL.Waste", "SL.FastWash"}},
        {"SOLVENT", {"SL.Diluent", "SL.Reagent", "SL.Lösemittel", "n-Hexane 95 %"}},
        {"AGITATOR", {"SL.Oven", "SL.Shaker"}},
        {"DETECTOR", {"SL.Chromatograph"}},
        {"FIBER", {"SL.FibreUsuelle"}},
        {"FREE TEXT", {"SL.Home", "SL.Échantillon", "Ask the operator", "試料台"}},
        {"UL", {"SL.InjVolume", "SL.StdVolume", "Sample Volume From List"}},
        {"UL/S", {"SL.GentleSpeed"}},
        {"SEC", {"SL.Dwell", "SL.RunTime"}},
        {"MIN", {"SL.ReactionTime", "SL.IncubationTime"}},
        {"DEG", {"SL.OvenTemperature", "SL.Température"}},
        {"RPM", {"SL.ShakerSpeed"}},
        {"None", {"SL.SampleIndex", "SL.StandardIndex", "From Sample List"}},
    };
}

}  // namespace vrn::samples
