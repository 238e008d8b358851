// Random heads and bores for the optimizer: grids of 32 mm and near misses of it, mixed diameters and
// tools, duplicates, inch drawings, marks without a search.
#pragma once

#include <array>
#include <random>
#include <string>

#include "drilling/drill_head.h"
#include "state/run.h"

namespace kv::test {

class RandomDrilling {
  public:
    explicit RandomDrilling(unsigned seed) : Engine(seed) {}

    int Pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(Engine); }
    bool Chance(int percent) { return Pick(1, 100) <= percent; }
    Single Between(Single low, Single high)
    {
        return std::uniform_real_distribution<Single>(low, high)(Engine);
    }

    void PutHead()
    {
        DrillParameters.assign(1, {});
        const int drills = Pick(0, 40);
        Single x = 0, y = 0;
        const bool alike = Chance(40);
        for (int n = 0; n < drills; ++n) {
            if (Chance(60))
                x += 32;
            else if (Chance(70))
                y += 32;
            else
                x += static_cast<Single>(Pick(-3, 3));
            DrillParameter drill;
            drill.X = x;
            drill.Y = y;
            drill.Diameter = alike ? 8.0F : Diameters[static_cast<std::size_t>(Pick(0, 2))];
            drill.Kind = static_cast<Int>(Chance(85) ? Pick(1, 2) : Pick(0, 5));
            DrillParameters.push_back(drill);
        }
        FillDrillHead();
        ClassifyHeadRows();
    }

    void PutPanel()
    {
        ResetRun();
        kv::Run.UnitFactor = Chance(20) ? 25.4F : 1.0F;
        kv::Run.OriginRight = Chance(40) ? True : False;
        kv::Run.OriginTop = Chance(40) ? True : False;
        kv::Run.SideWidth[5] = 1200 / kv::Run.UnitFactor;
        kv::Run.SideHeight[5] = 700 / kv::Run.UnitFactor;
    }

    void PutBores(int count)
    {
        const int columns = Pick(1, 12), rows = Pick(1, 12);
        const int spread = Pick(0, 3);
        const int kinds = Pick(0, 4);
        for (int i = 0; i < count; ++i) {
            VBoreRecord bore;
            if (i > 0 && Chance(8))
                bore = VBores[Pick(1, i)];
            bore.X = (static_cast<Single>(Pick(0, columns)) * 32 + Stray(spread)) / kv::Run.UnitFactor;
            bore.Y = (static_cast<Single>(Pick(0, rows)) * 32 + Stray(spread)) / kv::Run.UnitFactor;
            bore.Diameter = Diameters[static_cast<std::size_t>(Pick(0, kinds) == 0 ? Pick(0, 4) : 0)] /
                            kv::Run.UnitFactor;
            bore.Tool = Pick(0, kinds) == 0 ? Tools[static_cast<std::size_t>(Pick(0, 5))] : std::string();
            bore.Depth = static_cast<Single>(i);
            bore.Group = static_cast<Int>(Pick(0, 3));
            bore.Speed = static_cast<Int>(Pick(0, 6000));
            bore.ExtraSlot = static_cast<Int>(Pick(0, 2));
            bore.Bottom = static_cast<Int>(Pick(0, 5));
            VBores.Append(bore);
        }
    }

    // Chains as a search could have left them, in any mixture: sizes are counted by the caller.
    void PutMarks(int count)
    {
        const int chains = Pick(1, 8);
        const bool larger = Chance(50); // chains of unlike sizes
        std::array<int, 9> seed{};
        for (int i = 1; i <= count; ++i) {
            VBoreRecord bore;
            bore.X = static_cast<Single>(i);
            bore.Tool = Chance(3) ? "7" : ""; // names one drill: size 1 in the midst of a chain
            const int chain = larger ? Pick(0, Pick(1, chains)) : Pick(0, chains);
            int& first = seed[static_cast<std::size_t>(chain)];
            if (first == 0)
                first = i;
            bore.Group = static_cast<Int>(chain == 0 ? 0 : chain % 2 == 0 ? -first : first);
            VBores.Append(bore);
        }
    }

  private:
    Single Stray(int spread)
    {
        if (spread == 0 || Chance(60))
            return 0;
        const std::array<Single, 10> strays = {0.04F, 0.05F, 0.06F, 0.09F, 0.1F, 0.2F, 0.29F, 0.3F, 0.31F, 1};
        return Chance(10 * spread) ? Between(0, 40) : strays[static_cast<std::size_t>(Pick(0, 9))];
    }

    const std::array<Single, 5> Diameters = {8, 5, 10, 8.1F, 8.001F};
    const std::array<std::string, 6> Tools = {"01", "0305", "070911", " 7", "R", std::string("1\0 2", 4)};
    std::mt19937 Engine;
};

} // namespace kv::test
