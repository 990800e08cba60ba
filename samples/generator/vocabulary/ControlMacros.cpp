// Cycles that wait, signal and control temperatures and valves.
#include "vocabulary/Vocabulary.h"

namespace vrn::samples {

std::vector<Macro> controlMacros() {
    return {
        {"WAIT", {"Waits."}, {"SET_BUSY(Time)", "WAIT(Time)"}, {"Time(SEC);10;0;86400"}},
        {"WAIT UNTIL READY",
         {"Waits until a device is ready, and gives up after a while."},
         {"WAIT_READY(Device)"},
         {"Device;DETECTOR;HEATER;COOLER;AGITATOR", "Give Up After(MIN);60;0"}},
        {"WAIT OVERLAP",
         {"Lets the next sample begin while this one still takes its time."},
         {"WAIT_OVL(Overlap Time)"},
         {"Overlap Time(MIN);0;0;600"}},
        {"SYNC", {"Waits for the chromatograph's ready signal."}, {"WAIT_READY(SL.Chromatograph)"}, {}},
        {"START RUN",
         {"Starts the run of a detector without an injection."},
         {"START_DEVICE(Detector)"},
         {"Detector;DETECTOR"}},
        {"SIGNAL OUT",
         {"Sets a line of the output connector."},
         {"SIGNAL(Line,State)"},
         {"Line;1;1;8", "State;1;0;1", "Pulse();100;0;5000"}},
        {"SIGNAL IN",
         {"Waits for a line of the input connector."},
         {"SIGNAL(Line,State)", "WAIT(Give Up After)"},
         {"Line;1;1;8", "State;0;0;1", "Give Up After(SEC);60;0;3600"}},
        {"SET TEMPERATURE",
         {"Sets a temperature and goes on at once."},
         {"HEAT(Device,Temperature)"},
         {"Device;HEATER;AGITATOR;INJECTOR;CONDITIONER", "Temperature(DEG);40;25;350"}},
        {"COOL TRAY",
         {"Sets the temperature of a cooled tray."},
         {"COOL(Cooler,Temperature)"},
         {"Cooler;COOLER", "Temperature(DEG);4;-20;25"}},
        {"SWITCH VALVE", {"Switches a valve."}, {"SWITCH_VALVE(Valve,Position)"}, {"Valve;VALVE", "Position;1;1;10"}},
        {"REMARK", {"Writes a line into the log."}, {"LOG(Text)"}, {"Text"}},
        {"STANDBY", {"Lowers temperatures and flows."}, {"SIGNAL(8,0)"}, {}},
        {"SHUTDOWN",
         {"Switches everything off that may be switched off, then parks the head."},
         {"SIGNAL(8,0)", "MOVE_TO(SL.Home)"},
         {"Cool Down(MIN);30;0;240", "Flush Lines;1;0;1"}},
    };
}

}  // namespace vrn::samples
