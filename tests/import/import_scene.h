// Drawings read through the import, in a scratch folder: the records that the passes get, and what was said.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "import/import_reading.h"
#include "platform/paths.h"
#include "state/drawn_entities.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"
#include "support/dxf.h"
#include "support/scene.h"

namespace kv::test {

// Blocks, header and tables as text, around entities.
struct WholeDrawing {
    std::string Entities = {}, Blocks = {}, Header = {}, Tables = {};
    std::string Text() const
    {
        const auto section = [](std::string_view name, const std::string& pairs) {
            return pairs.empty() ? std::string()
                                 : Pair(0, "SECTION") + Pair(2, name) + pairs + Pair(0, "ENDSEC");
        };
        return section("HEADER", Header) + section("TABLES", Tables) + section("BLOCKS", Blocks) +
               Pair(0, "SECTION") + Pair(2, "ENTITIES") + Entities + Pair(0, "ENDSEC") + Pair(0, "EOF");
    }
};

inline std::string Block(std::string_view name, const std::string& entities, double x = 0, double y = 0)
{
    return Pair(0, "BLOCK") + Pair(8, "0") + Pair(2, name) + Pair(70, 0) + Pair(10, x) + Pair(20, y) +
           entities + Pair(0, "ENDBLK") + Pair(8, "0");
}

inline std::string Insert(std::string_view layer, std::string_view block, double x, double y,
                          const std::string& more = "")
{
    return Pair(0, "INSERT") + Pair(8, layer) + Pair(2, block) + Pair(10, x) + Pair(20, y) + more;
}

inline std::string HiddenLayer(std::string_view name, int flags, int color)
{
    return Pair(0, "LAYER") + Pair(2, name) + Pair(70, flags) + Pair(62, color);
}

// Names and contents of all programs that the scene has, and takes them away.
inline std::map<std::string, std::string> TakePrograms(const Scene& place)
{
    namespace fs = std::filesystem;
    std::map<std::string, std::string> programs;
    for (const auto& entry : fs::recursive_directory_iterator(place.Programs))
        if (entry.is_regular_file() && !IsAgreement(entry.path()) && entry.path().filename() != "INDICE.PRG")
            programs[entry.path().lexically_relative(place.Programs).string()] = place.Read(entry.path());
    for (const auto& [name, contents] : programs)
        fs::remove(place.Programs / name);
    return programs;
}

struct ImportScene : ::testing::Test {
    Scene Place;
    RunBlock& Run = kv::Run; // the test class has a Run of its own

    // The records of the drawing, without the blank ones at both ends.
    std::vector<DxfEntity> ReadBytes(const std::string& drawing, std::string_view mode = "full")
    {
        Config.Import = mode;
        std::string path = FromHostPath(Place.Write("DOOR.DXF", drawing).string());
        Place.Lines.clear();
        ForgetTold();
        ReadAnyDrawing(path);
        ReportMessage(2, "");
        std::vector<DxfEntity> records;
        for (Long i = 2; i < Entities.Last(); ++i)
            records.push_back(Entities[i]);
        return records;
    }
    std::vector<DxfEntity> Read(const WholeDrawing& drawing, std::string_view mode = "full")
    {
        return ReadBytes(drawing.Text(), mode);
    }
    static std::string KindsOf(const std::vector<DxfEntity>& records)
    {
        std::string kinds;
        for (const DxfEntity& record : records)
            kinds += (kinds.empty() ? "" : " ") + std::string(record.Kind.Trimmed());
        return kinds;
    }
    static std::string LayersOf(const std::vector<DxfEntity>& records)
    {
        std::string layers;
        for (const DxfEntity& record : records)
            layers += (layers.empty() ? "" : " ") + std::string(record.Layer.Trimmed());
        return layers;
    }
    static std::string TextOf(const DxfEntity& record)
    {
        return EntityTexts[static_cast<std::size_t>(record.TextIndex)];
    }
};

} // namespace kv::test
