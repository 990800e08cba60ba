// Cycles that work with a coated fiber.
#include "vocabulary/Vocabulary.h"

namespace vrn::samples {

std::vector<Macro> spmeMacros() {
    return {
        {"SPME-INJ",
         {"The whole of solid phase micro extraction: condition, extract, desorb, condition again."},
         {"CHANGE_TOOL(Fiber)", "EXPOSE_FIBER(Conditioner,Pre Condition Time)", "HEAT(Agitator,Temperature)",
          "WAIT_OVL(Incubation Time)", "EXPOSE_FIBER(Agitator,Extraction Time)", "RETRACT_FIBER(Agitator)",
          "EXPOSE_FIBER(Injector,Desorption Time)", "START_DEVICE(Detector)", "RETRACT_FIBER(Injector)",
          "EXPOSE_FIBER(Conditioner,Post Condition Time)"},
         {"Fiber;FIBER", "Conditioner;CONDITIONER", "Conditioning Temperature(DEG);250;40;350",
          "Pre Condition Time(MIN);5;0;120", "Sample Tray;TRAY;VIAL_RACK", "Sample Position;1;1;60",
          "Agitator;AGITATOR", "Temperature(DEG);40;30;200", "Incubation Time(MIN);10;0;600",
          "Extraction Time(MIN);30;1;600", "Agitator Speed(RPM);250;250;750", "Vial Depth(MM);22;5;50",
          "Injector;INJECTOR", "Injector Depth(MM);54;10;70", "Desorption Time(SEC);180;1;3600", "Detector;DETECTOR",
          "Post Condition Time(MIN);10;0;120"}},
        {"SPME-EXTRACT",
         {"Exposes the fiber to the headspace of a vial or to the liquid itself."},
         {"EXPOSE_FIBER(Agitator,Extraction Time)", "RETRACT_FIBER(Agitator)"},
         {"Fiber;FIBER", "Sample Tray;TRAY;VIAL_RACK", "Sample Position;1;1;60", "Agitator;AGITATOR",
          "Extraction Time(MIN);30;1;600", "Vial Depth(MM);22;5;50"}},
        {"SPME-DESORB",
         {"Desorbs the fiber in a hot injector and starts the detector."},
         {"EXPOSE_FIBER(Injector,Desorption Time)", "START_DEVICE(Detector)", "RETRACT_FIBER(Injector)"},
         {"Fiber;FIBER", "Injector;INJECTOR", "Injector Depth(MM);54;10;70", "Desorption Time(SEC);180;1;3600",
          "Detector;DETECTOR"}},
        {"SPME-CONDITION",
         {"Bakes the fiber out in the conditioning station."},
         {"HEAT(Conditioner,Temperature)", "WAIT_READY(Conditioner)", "EXPOSE_FIBER(Conditioner,Time)"},
         {"Fiber;FIBER", "Conditioner;CONDITIONER", "Temperature(DEG);250;40;350", "Time(MIN);30;1;600"}},
        {"SPME-DERIVATIZE",
         {"Loads the fiber with reagent vapour, then exposes it to the sample."},
         {"EXPOSE_FIBER(Reagent,Loading Time)", "EXPOSE_FIBER(Agitator,Extraction Time)", "RETRACT_FIBER(Agitator)"},
         {"Fiber;FIBER", "Reagent;SOLVENT;VIAL_RACK", "Loading Time(MIN);5;1;60", "Agitator;AGITATOR",
          "Extraction Time(MIN);30;1;600"}},
        {"SPME-BLANK",
         {"Desorbs an unexposed fiber to show what it carries over."},
         {"EXPOSE_FIBER(Injector,Desorption Time)", "START_DEVICE(Detector)"},
         {"Fiber;FIBER", "Injector;INJECTOR", "Desorption Time(SEC);180;1;3600", "Detector;DETECTOR"}},
        {"FIBER EXCHANGE",
         {"Puts the fiber back into its magazine and takes another one."},
         {"CHANGE_TOOL(Old Fiber)", "CHANGE_TOOL(New Fiber)", "LOG(Remark)"},
         {"Old Fiber;FIBER", "New Fiber;FIBER", "Remark"}},
        {"ARROW EXTRACT",
         {"Extracts with a fiber of large phase volume, stirring by moving the vial."},
         {"SET_BUSY(Hold Time)", "AGITATE_ON(Agitator,Speed)", "EXPOSE_FIBER(Agitator,Extraction Time)",
          "AGITATE_OFF(Agitator)", "RETRACT_FIBER(Agitator)"},
         {"Fiber;FIBER", "Agitator;AGITATOR", "Speed(RPM);1000;250;1500", "Extraction Time(MIN);20;1;600",
          "Hold Time(SEC);0;0;7200"}},
    };
}

}  // namespace vrn::samples
