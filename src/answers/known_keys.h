// The keys of node properties that the export knows, with what it makes of them: the one table of all checks
// of properties.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace answers {

// Where a key has an effect.
enum class eKeyPlace {
    Anywhere,
    Models,   // at the root of a model
    Bones,    // on nodes that are nothing else
    Joints,   // on bones with a joint
    Ranges,   // on joints that turn or slide
    Sockets,  // on the third kind of joint
    Volumes,
    Zones,  // volumes that are zones too among them
    VolumesAndZones,
    SupportPoints,
    Bodies,
    Previews,
};

// Who looks for it: the own reader wants the key alone on its line, without a blank; the host's takes blanks
// around it; where the own reader's pairs are trimmed, either finds it.
enum class eKeyReader { Own, Host, Trimmed };

// What its value must be. What the run itself tells of a value is no form here.
enum class eValueForm {
    Free,
    Mark,  // it counts by being there, whatever its value
    Text,  // anything but nothing
    Number,
    WholeNumber,  // or nothing
    Numbers,      // parted by commas or blanks
    Tags,         // words parted by commas
    NodeName,
    NodeNameOrNone,
    NodeNames,  // parted by blanks
    Animation,
};

struct eKnownKey {
    std::string name;
    eKeyPlace place = eKeyPlace::Anywhere;
    eKeyReader reader = eKeyReader::Own;
    eValueForm form = eValueForm::Free;
};

std::span<const eKnownKey> KnownKeys();

// Their names, in the same order.
std::span<const std::string> KnownKeyNames();

// Null for any other key. Letter case does not count.
const eKnownKey* FindKnownKey(std::string_view key);

}  // namespace answers
