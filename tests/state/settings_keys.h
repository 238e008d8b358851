// The keys that are saved together, as a file of them, for the tests of the load, save and override.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace kv {

// Every key of the exchange in the order in which it is written, with a value that a load keeps.
inline const std::vector<std::pair<std::string, std::string>> AllKeys = {
    {"FormState", "-1"},
    {"SourcePath90", "C:\\S90\\"},
    {"SourcePathGen", "C:\\SG\\"},
    {"SourcePathEV", "C:\\SE\\"},
    {"DestinationPath90", "C:\\D90\\"},
    {"DestinationPathGen", "C:\\DG\\"},
    {"DestinationPathEV", "C:\\DE\\"},
    {"AutoStartTemp", "True"},
    {"AutoStartBatch", "True"},
    {"HBDDestinationPath", "C:\\H\\"},
    {"MakeHBD", " 1"},
    {"HBDGlue", " 1"},
    {"HBDDowel", " 1"},
    {"HBDVBoreLimit", "60"},
    {"EvOptOff", "True"},
    {"EvOptLR", "True"},
    {"EvOptRL", "True"},
    {"EvOptGS", "True"},
    {"EvOptSS", "True"},
    {"Winner90", "True"},
    {"Genesis", "True"},
    {"GenesisEV", "True"},
    {"LeadS", " 1"},
    {"LeadRampIn", " 1"},
    {"LeadRampOut", " 1"},
    {"RemoveBorderRoute", " 1"},
    {"CornerComp", " 1"},
    {"LeadLength", "25.5"},
    {"LeadRampHeight", "10.5"},
    {"PrecisionMetric", "1"},
    {"PrecisionInch", "4"},
    {"Metric", "Inch"},
    {"OffsetX", "1.1"},
    {"OffsetY", "2.2"},
    {"OffsetZ", "3.3"},
    {"GraphicAfterAuto", " 1"},
    {"GraphicAfterMan", " 1"},
    {"PauseForMessages", " 1"},
    {"TipsEnable", " 1"},
    {"SawKerf", "4.2"},
    {"MakeBinaries", " 1"},
    {"LineLimit", "700"},
    {"BatchLimit", "5"},
    {"RadiusLimit", "7500"},
    {"SpeedyInchMode", " 1"},
    {"GraphicDelay", "1.5"},
    {"UnitMode", "2"},
};

inline std::string FileOfAllKeys()
{
    std::string text = "[ConFiguration]\r\n";
    for (const auto& [key, value] : AllKeys)
        text += key + "=" + value + "\r\n";
    return text;
}

} // namespace kv
