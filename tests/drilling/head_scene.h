// A head and bores laid by hand, for the optimizer's tests.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "drilling/drill_head.h"
#include "state/run.h"
#include "support/scene.h"

namespace kv::test {

struct Drill {
    Single X = 0, Y = 0, Diameter = 8;
    Int Kind = VerticalDrill;
};

class HeadScene : public testing::Test {
  protected:
    void SetUp() override
    {
        ResetProcess();
        ResetRun();
        kv::Run.SideWidth[5] = 1000;
        kv::Run.SideHeight[5] = 600;
    }
    void TearDown() override
    {
        PutHead({});
        ResetProcess();
    }

    static void PutHead(const std::vector<Drill>& drills)
    {
        DrillParameters.assign(1, {});
        for (const Drill& drill : drills) {
            DrillParameter line;
            line.X = drill.X;
            line.Y = drill.Y;
            line.Diameter = drill.Diameter;
            line.Kind = drill.Kind;
            DrillParameters.push_back(line);
        }
        FillDrillHead();
        ClassifyHeadRows();
    }
    // Drills of these diameters along X, 32 mm apart, from slot 1 on.
    static std::vector<Drill> RowX(const std::vector<Single>& diameters)
    {
        std::vector<Drill> row;
        for (const Single diameter : diameters)
            row.push_back({static_cast<Single>(32 * (row.size() + 1)), 0, diameter});
        return row;
    }
    // `head`, and behind it drills at one X, at these Y.
    static std::vector<Drill> AndRowY(std::vector<Drill> head, const std::vector<Single>& places,
                                      Single diameter = 8)
    {
        for (const Single y : places)
            head.push_back({900, y, diameter});
        return head;
    }

    static VBoreRecord& Bore(Single x, Single y, Single diameter = 8, std::string_view tool = "")
    {
        VBoreRecord bore;
        bore.X = x;
        bore.Y = y;
        bore.Depth = 12;
        bore.Diameter = diameter;
        bore.Tool = tool;
        return VBores.Append(bore);
    }
};

} // namespace kv::test
