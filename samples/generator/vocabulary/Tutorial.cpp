// The installation of the tutorial: three cycles, seven objects, a handful of names.
#include "vocabulary/Vocabulary.h"

namespace vrn::samples {

Installation tutorialInstallation() {
    Installation tutorial;
    tutorial.macros = {
        {"WASH",
         {"Washes the syringe."},
         {"WASH(Station,Cycles)"},
         {"Station;WASH_STATION", "Cycles;3;1;20"},
         "2024-01-15T09:00:00"},
        {"LIQUID",
         {"Injects a liquid sample.", "The volume's range is that of the syringe."},
         {"SET_BUSY(Hold Time)", "ASPIRATE(Sample Tray,Volume)", "INJECT(Volume)"},
         {"Sample Tray;TRAY", "Position;1;1;54", "Volume(UL);SYR.MinVolume;SYR.MinVolume;SYR.MaxVolume",
          "Hold Time(SEC);0;0;600"},
         "2024-01-15T09:05:00"},
        {"HEADSPACE",
         {"Heats a vial and injects the gas above the sample."},
         {"HEAT(Agitator,Temperature)", "WAIT_OVL(Incubation Time)", "ASPIRATE(Sample Tray,Volume)", "INJECT(Volume)"},
         {"Sample Tray;TRAY", "Position;1;1;54", "Agitator;AGITATOR", "Temperature(DEG);80;30;200",
          "Incubation Time(MIN);20;0;600", "Volume(UL);SYR.MaxVolume;SYR.MinVolume;SYR.MaxVolume"},
         "2024-01-15T09:10:00"},
    };
    tutorial.objects = {
        {"SYRINGE", "10uL", {{"MinVolume", "1"}, {"MaxVolume", "10"}}},
        {"SYRINGE", "1000uL", {{"MinVolume", "100"}, {"MaxVolume", "1000"}}},
        {"TRAY", "Tray 1", {{"Slots", "54"}}},
        {"TRAY", "Tray 2", {{"Slots", "54"}}},
        {"WASH_STATION", "Wash 1", {}},
        {"WASH_STATION", "Wash 2", {}},
        {"AGITATOR", "Agitator", {{"MaxTemperature", "200"}}},
    };
    tutorial.atoms = {
        {"WASH", {"Station;WASH_STATION", "Cycles;1;1;20"}},
        {"ASPIRATE", {"Source;TRAY", "Volume(UL)"}},
        {"INJECT", {"Volume(UL)"}},
        {"HEAT", {"Device;AGITATOR", "Temperature(DEG)"}},
        {"SET_BUSY", {"Time(SEC)"}},
        {"WAIT_OVL", {"Time(MIN)"}},
    };
    tutorial.names = {
        {"TRAY", {"SL.MyTray"}},
        {"FREE TEXT", {"Ask the operator"}},
        {"UL", {"SL.InjVolume"}},
        {"None", {"From Sample List"}},
    };
    return tutorial;
}

}  // namespace vrn::samples
