// The objects of the instrument: fifteen types, one hundred and fifty objects.
#include <array>
#include <initializer_list>
#include <string>

#include "vocabulary/Vocabulary.h"

namespace vrn::samples {

namespace {

/// What a syringe can do; volumes in microlitres, speeds in microlitres a second. Cycles bind their ranges to these.
struct SyringeData {
    const char* name;
    const char* volume;
    const char* minVolume;
    const char* defaultVolume;
    const char* minSpeed;
    const char* fillSpeed;
    const char* injectSpeed;
    const char* maxSpeed;
    int needleLength;
    bool heated;
};

constexpr std::array<SyringeData, 9> syringes{{
    {"1.2uL", "1.2", "0.1", "0.5", "0.1", "0.5", "1", "10", 57, false},
    {"5uL", "5", "0.5", "1", "0.1", "2", "5", "50", 57, false},
    {"10uL", "10", "1", "1", "0.1", "5", "50", "100", 57, false},
    {"25uL", "25", "2.5", "5", "0.2", "10", "50", "250", 57, false},
    {"100uL", "100", "10", "20", "1", "25", "100", "500", 57, false},
    {"250uL", "250", "25", "50", "1", "50", "100", "1000", 57, false},
    {"1000uL", "1000", "100", "250", "5", "100", "250", "2500", 57, false},
    {"1000uL HS", "1000", "100", "500", "10", "100", "250", "1000", 65, true},
    {"2500uL HS", "2500", "250", "1000", "10", "250", "500", "2500", 65, true},
}};

Object syringe(const SyringeData& data) {
    Object object{"SYRINGE",
                  data.name,
                  {{"Volume", data.volume},
                   {"MinVolume", data.minVolume},
                   {"MaxVolume", data.volume},
                   {"DefaultVolume", data.defaultVolume},
                   {"MinSpeed", data.minSpeed},
                   {"FillSpeed", data.fillSpeed},
                   {"InjectSpeed", data.injectSpeed},
                   {"MaxSpeed", data.maxSpeed},
                   {"NeedleLength", std::to_string(data.needleLength)}}};
    if (data.heated) {
        object.properties.push_back({"MinTemperature", "40"});
        object.properties.push_back({"DefaultTemperature", "85"});
        object.properties.push_back({"MaxTemperature", "150"});
    }
    return object;
}

/// Objects of one type that stand side by side: numbered names, places that follow one another.
struct Series {
    const char* type = "";
    const char* name = "";
    int count = 0;
    int x = 0;  ///< of the first, in tenths of a millimetre
    int y = 0;
    int step = 0;
    std::initializer_list<Property> properties;
};

void append(std::vector<Object>& objects, const Series& series) {
    for (int i = 0; i < series.count; ++i) {
        Object object{series.type, series.name + std::to_string(i + 1), series.properties};
        object.properties.push_back({"PositionX", std::to_string(series.x + i * series.step)});
        object.properties.push_back({"PositionY", std::to_string(series.y)});
        objects.push_back(std::move(object));
    }
}

void append(std::vector<Object>& objects, const char* type, std::initializer_list<const char*> names,
            const std::vector<Property>& properties) {
    for (const char* name : names) {
        objects.push_back({type, name, properties});
    }
}

}  // namespace

std::vector<Object> instrumentObjects() {
    std::vector<Object> objects;
    objects.reserve(150);
    for (const SyringeData& data : syringes) {
        objects.push_back(syringe(data));
    }
    append(objects, {"TRAY", "Tray ", 18, 600, 1500, 950, {{"Slots", "54"}, {"VialHeight", "32"}}});
    append(objects, {"TRAY", "Large Tray ", 6, 600, 2800, 950, {{"Slots", "32"}, {"VialHeight", "46"}}});
    append(objects, {"VIAL_RACK", "Rack ", 12, 18000, 1500, 700, {{"Slots", "21"}, {"VialHeight", "32"}}});
    append(objects, "VIAL_RACK", {"Standards", "Blanks", "Filter Rack", "Cartridge Rack"},
           {{"Slots", "21"}, {"VialHeight", "32"}});
    append(objects, {"STACK", "Drawer ", 5, 27000, 900, 0, {{"Slots", "384"}, {"Cooled", "1"}}});
    append(objects, "STACK", {"Caps"}, {{"Slots", "100"}, {"Cooled", "0"}});
    append(objects, "INJECTOR",
           {"Front SSL", "Rear SSL", "Front PTV", "Rear PTV", "On Column", "Direct Probe", "GC 2 Front", "GC 2 Rear"},
           {{"SeptumDepth", "12"}, {"MaxTemperature", "400"}});
    append(objects, {"VALVE", "Valve ", 13, 29500, 1200, 60, {{"Ports", "6"}, {"SwitchTime", "100"}}});
    append(objects, "VALVE", {"LC Valve A", "LC Valve B", "Rückspülventil"}, {{"Ports", "10"}, {"SwitchTime", "150"}});
    append(objects, {"WASH_STATION", "Wash ", 6, 14000, 600, 420, {{"Depth", "40"}, {"FlowRate", "5"}}});
    append(objects, "WASH_STATION", {"Fast Wash", "Rinse Port"}, {{"Depth", "30"}, {"FlowRate", "20"}});
    append(objects, {"SOLVENT", "Solvent ", 12, 15000, 700, 380, {{"BottleVolume", "100"}, {"Level", "80"}}});
    append(objects, "SOLVENT",
           {"Methanol", "Acetone", "Hexane", "Dichloromethane", "Water", "Acetonitrile", "MSTFA", "BSTFA + TMCS",
            "Diazomethane", "Acetic Anhydride"},
           {{"BottleVolume", "20"}, {"Level", "15"}});
    append(objects, {"AGITATOR", "Agitator ", 4, 21000, 2600, 1500, {{"Slots", "6"}, {"MaxTemperature", "200"}}});
    append(objects, "AGITATOR", {"Vortexer", "Stirrer"}, {{"Slots", "1"}, {"MaxTemperature", "120"}});
    append(objects, {"HEATER", "Heater ", 6, 23500, 3300, 520, {{"Slots", "1"}, {"MaxTemperature", "120"}}});
    append(objects, "COOLER", {"Peltier Left", "Peltier Right", "Cryo Trap", "Column Oven", "Cold Finger"},
           {{"MinTemperature", "-60"}, {"MaxTemperature", "40"}});
    append(objects, "GRIPPER", {"Magnet", "Clamp", "Clamp Wide", "Plate Clamp"}, {{"MaxWeight", "60"}});
    append(objects, "FIBER",
           {"PDMS 7", "PDMS 30", "PDMS 100", "PA 85", "CAR PDMS 75", "CW PEG 60", "PDMS DVB 65", "DVB CAR PDMS 50",
            "Arrow PDMS 100", "Arrow DVB 120"},
           {{"MaxTemperature", "280"}, {"MaxStrokes", "300"}});
    append(objects, {"CONDITIONER", "Conditioning ", 4, 26000, 3300, 450, {{"MaxTemperature", "350"}}});
    append(objects, "DETECTOR", {"FID", "ECD", "NPD", "MSD", "QQQ", "UV"}, {{"Polarity", "1"}});
    return objects;
}

}  // namespace vrn::samples
