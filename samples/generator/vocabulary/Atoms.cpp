// The elementary commands that the instrument offers to the cycles.
#include "vocabulary/Vocabulary.h"

namespace vrn::samples {

std::vector<Atom> instrumentAtoms() {
    return {
        {"SET_BUSY", {"Time(SEC);0;0;86400"}},
        {"WAIT_OVL", {"Time(MIN);0;0;600"}},
        {"WAIT", {"Time(SEC);0;0;86400"}},
        {"WAIT_READY", {"Device;DETECTOR;HEATER;COOLER;AGITATOR;CONDITIONER"}},
        {"START_DEVICE", {"Device;DETECTOR"}},
        {"MOVE_TO", {"Target;TRAY;VIAL_RACK;STACK;INJECTOR;WASH_STATION;AGITATOR", "Position;1;1;384"}},
        {"ASPIRATE",
         {"Source;TRAY;VIAL_RACK;STACK;SOLVENT;AGITATOR;VALVE", "Volume(UL);SYR.DefaultVolume;0;SYR.MaxVolume"}},
        {"DISPENSE", {"Target;TRAY;VIAL_RACK;STACK;WASH_STATION", "Volume(UL);SYR.DefaultVolume;0;SYR.MaxVolume"}},
        {"INJECT", {"Target;INJECTOR;VALVE", "Speed(UL/S);SYR.InjectSpeed;SYR.MinSpeed;SYR.MaxSpeed"}},
        {"WASH", {"Station;WASH_STATION;SOLVENT", "Cycles;1;0;20"}},
        {"FLUSH_GAS", {"Valve;VALVE", "Time(SEC);10;0;3600"}},
        {"SWITCH_VALVE", {"Valve;VALVE", "Position;1;1;10"}},
        {"HEAT", {"Device;HEATER;AGITATOR;INJECTOR;CONDITIONER", "Temperature(DEG);40;25;400"}},
        {"COOL", {"Device;COOLER;INJECTOR", "Temperature(DEG);4;-150;60"}},
        {"AGITATE_ON", {"Device;AGITATOR", "Speed(RPM);500;250;2000"}},
        {"AGITATE_OFF", {"Device;AGITATOR"}},
        {"GRIP", {"Source;TRAY;VIAL_RACK;STACK;AGITATOR;HEATER;COOLER", "Position;1;1;384"}},
        {"RELEASE", {"Target;TRAY;VIAL_RACK;STACK;AGITATOR;HEATER;COOLER", "Position;1;1;384"}},
        {"EXPOSE_FIBER", {"Target;AGITATOR;INJECTOR;CONDITIONER;SOLVENT;VIAL_RACK", "Time(MIN);1;0;600"}},
        {"RETRACT_FIBER", {"Target;AGITATOR;INJECTOR;CONDITIONER"}},
        {"CHANGE_TOOL", {"Tool;SYRINGE;GRIPPER;FIBER"}},
        {"READ_CODE", {"Expected"}},
        {"SIGNAL", {"Line;1;1;8", "State;0;0;1"}},
        {"LOG", {"Text"}},
        {"BEEP", {}},
    };
}

}  // namespace vrn::samples
