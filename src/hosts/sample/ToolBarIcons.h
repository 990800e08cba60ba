// The icons of the tool bar, drawn as characters: a picture can be read where it stands.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace vrn::sample {

inline constexpr std::size_t iconSize = 16;

/// The colours that characters stand for; a blank is transparent.
struct IconColour {
    char character;
    unsigned rgb;
};
inline constexpr std::array<IconColour, 8> iconColours{{{'#', 0x4A5568},
                                                        {'w', 0xFFFFFF},
                                                        {'s', 0xCBD5E0},
                                                        {'y', 0xF2B84B},
                                                        {'o', 0xC98A1B},
                                                        {'b', 0x2F6FBF},
                                                        {'g', 0x2E9E5B},
                                                        {'r', 0xC0392B}}};

/// Row by row, in the order of the buttons.
inline constexpr std::array<std::string_view, 7> toolBarIcons{
    // New: an empty sheet
    "                "
    "   #######      "
    "   #wwwww##     "
    "   #wwwww#s#    "
    "   #wwwww####   "
    "   #wwwwwwww#   "
    "   #wwwwwwww#   "
    "   #wwwwwwww#   "
    "   #wwwwwwww#   "
    "   #wwwwwwww#   "
    "   #wwwwwwww#   "
    "   #wwwwwwww#   "
    "   #wwwwwwww#   "
    "   ##########   "
    "                "
    "                ",
    // Open set: a folder
    "                "
    "                "
    "  oooo          "
    " oyyyyo         "
    " oyyyyyooooooo  "
    " oyyyyyyyyyyyo  "
    " oyyyyyyyyyyyo  "
    " oyoooooooooooo "
    " oyoyyyyyyyyyyo "
    " ooyyyyyyyyyyo  "
    " ooyyyyyyyyyyo  "
    " oyyyyyyyyyyo   "
    " oyyyyyyyyyyo   "
    " ooooooooooo    "
    "                "
    "                ",
    // Open method: a written sheet
    "                "
    "   #######      "
    "   #wwwww##     "
    "   #wwwww#s#    "
    "   #wbbww####   "
    "   #wwwwwwww#   "
    "   #wbbbbbbw#   "
    "   #wwwwwwww#   "
    "   #wbbbbbww#   "
    "   #wwwwwwww#   "
    "   #wbbbbbbw#   "
    "   #wwwwwwww#   "
    "   #wwwwwwww#   "
    "   ##########   "
    "                "
    "                ",
    // Save: a disk
    "                "
    " ############## "
    " #b#wwwwwww#bb# "
    " #b#www##ww#bb# "
    " #b#www##ww#bb# "
    " #b#wwwwwww#bb# "
    " #bb#######bbb# "
    " #bbbbbbbbbbbb# "
    " #bb########bb# "
    " #b#wwwwwwww#b# "
    " #b#wsssssww#b# "
    " #b#wwwwwwww#b# "
    " #b#wsssssww#b# "
    " ############## "
    "                "
    "                ",
    // Verify: a check mark
    "                "
    "                "
    "             gg "
    "            ggg "
    "           gggg "
    "          gggg  "
    " gg      gggg   "
    " ggg    gggg    "
    " gggg  gggg     "
    "  gggggggg      "
    "   gggggg       "
    "    gggg        "
    "     gg         "
    "                "
    "                "
    "                ",
    // Lock
    "                "
    "     ######     "
    "    ##    ##    "
    "    #      #    "
    "    #      #    "
    "    #      #    "
    "  oooooooooooo  "
    "  oyyyyyyyyyyo  "
    "  oyyyy##yyyyo  "
    "  oyyyy##yyyyo  "
    "  oyyyyy#yyyyo  "
    "  oyyyyy#yyyyo  "
    "  oyyyyyyyyyyo  "
    "  oooooooooooo  "
    "                "
    "                ",
    // Compare: two sheets
    "                "
    " #######        "
    " #wwwww##       "
    " #wbbwww#       "
    " #wwwww#######  "
    " #wbbww#wwwww## "
    " #wwwww#wrrwww# "
    " #wbbww#wwwwww# "
    " #wwwww#wrrrrw# "
    " #wwwww#wwwwww# "
    " #######wrrrww# "
    "       #wwwwww# "
    "       #wwwwww# "
    "       ######## "
    "                "
    "                ",
};

}  // namespace vrn::sample
