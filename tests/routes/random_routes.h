// Random drawings with routes of all kinds: entities that meet on a coarse grid or lie anywhere, layers
// with random codes, marks, pockets, edge views, instructions; and random settings. A seed is a drawing.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "state/run.h"
#include "state/settings.h"
#include "support/dxf.h"

namespace kv::test {

class RandomRouteDrawing {
  public:
    // Tame ones can be cut as drawn: no pockets, no marks, nothing mirrored, no lengths of zero.
    RandomRouteDrawing(unsigned seed, bool tame) : Numbers(seed), Tame(tame) {}

    std::string Drawn()
    {
        std::string entities;
        if (Chance(2))
            entities += Instructions(Directives());
        HasViews = Chance(3);
        if (!Tame && Chance(8))
            entities += PanelSolid("PANEL", 60, 60, 600, 400, 18);
        else
            entities += Border();
        std::vector<std::string> layers;
        for (int left = 1 + Upto(3); left > 0; --left)
            layers.push_back(Layer());
        for (int left = 1 + Upto(24); left > 0; --left)
            entities += Entity(layers[static_cast<std::size_t>(Upto(static_cast<int>(layers.size()) - 1))]);
        if (!Tame && Chance(4))
            entities += Pocket();
        for (int left = Upto(3); left > 0; --left)
            entities += Circle("VBOREZ12", 70 + Upto(500), 70 + Upto(300), 4);
        return Drawing(entities);
    }
    void Settle() // the settings of this drawing
    {
        Config.LeadS = Flag();
        Config.LeadLength = std::to_string(Upto(40));
        Config.LeadRampHeight = std::to_string(Upto(20));
        Config.LeadRampIn = Flag();
        Config.LeadRampOut = Flag();
        Config.CornerComp = Flag();
        Config.RemoveBorderRoute = Flag();
        Config.PrecisionMetric = Config.PrecisionInch = Tame ? "4" : std::to_string(Upto(6));
        Config.DRAlternate = Chance(4) ? "1" : "0";
        if (Tame)
            return;
        Config.SPDA = Flag() ? "NO" : "";
        Config.LineLimit = Chance(4) ? std::to_string(5 + Upto(30)) : "800";
        Config.Sequence = Chance(4) ? "RVGH" : "";
        Config.RouteTolerance = Chance(4) ? std::to_string(Upto(30)) : "";
        Config.LineOrigin = Pick({"LL", "UL", "UR", "LR", ""});
        Config.Origin = Chance(8) ? "1" : "";
        Config.UnitMode = Chance(8) ? "1" : "3";
        Run.ControlType = static_cast<Int>(Chance(4) ? 1 : 0);
    }

  private:
    int Upto(int last) { return static_cast<int>(Numbers() % static_cast<unsigned>(last + 1)); }
    bool Chance(int in) { return Upto(in - 1) == 0; }
    Int Flag() { return static_cast<Int>(Upto(1)); }
    double Between(double low, double high)
    {
        return std::uniform_real_distribution<double>(low, high)(Numbers);
    }
    std::string Pick(const std::vector<std::string>& texts)
    {
        return texts[static_cast<std::size_t>(Upto(static_cast<int>(texts.size()) - 1))];
    }

    std::vector<std::string> Directives()
    {
        std::vector<std::string> lines;
        for (int left = Upto(4); left > 0; --left)
            lines.push_back(
                Pick({"CORNERCOMP ON", "CORNERCOMP OFF", "LEAD=ON 15", "LEAD=OFF", "LEAD=7", "RAMPIN ON",
                      "RAMPOUT ON", "ZRAMP=4", "REMBORDER ON", "NOARCSUB", "DRALT", "VAR A=B"}));
        return lines;
    }
    std::string Border()
    {
        const std::string layer = "BORDERZ18";
        std::string lines = Rectangle(layer, 60, 60, 600, 400);
        if (HasViews)
            lines += Rectangle(layer, 60, 480, 600, 18) + Rectangle(layer, 60, 20, 600, 18) +
                     Rectangle(layer, 20, 60, 18, 400) + Rectangle(layer, 680, 60, 18, 400);
        return lines;
    }

    std::string Number()
    {
        if (Tame)
            return std::to_string(1 + Upto(30));
        return Pick(
            {"", "0", "-3", "5", "12", "2.5", ".25", "19", "20P5", "D", "A", "R3", "999", "201", "45"});
    }
    std::string Layer()
    {
        if (Tame) {
            std::string layer = "ROUTE" + (Chance(2) ? std::to_string(1 + Upto(4)) : std::string()) + "Z" +
                                std::to_string(1 + Upto(25)) + "T" + std::to_string(21 + Upto(60));
            for (int left = Upto(3); left > 0; --left)
                layer +=
                    Pick({"L5", "R4", "LD", "LD12", "RI4", "RO3", "M2", "F4000", "FA2000", "FD900", "S18"});
            if (Chance(6))
                layer += "OZ2";
            return layer;
        }
        std::string layer = Pick({"ROUTE", "ROUTE", "ROUTE", "ROUT", "ROTAR", "EXCAV", "XROUTE"});
        for (int left = Upto(7); left > 0; --left)
            layer += Pick({"Z",  "T",  "D", "L",  "R", "LD", "RI", "RO", "M",  "F", "FA",
                           "FD", "FR", "S", "OZ", "A", "B",  "G",  "K",  "EX", "_", " "}) +
                     Number();
        return Chance(10) ? layer + "$Z7T22" : layer;
    }

    Vertex Grid() // few places, so that ends meet; some on the panel's edge, some in the views
    {
        if (HasViews && Chance(4))
            return InView();
        return {60 + 50.0 * Upto(12), 60 + 50.0 * Upto(8)};
    }
    Vertex InView()
    {
        const double along = 100 + 50.0 * Upto(5);
        const double across = 1 + 4.0 * Upto(4);
        switch (Upto(3)) {
        case 0:
            return {along, 480 + across};
        case 1:
            return {along, 20 + across};
        case 2:
            return {20 + across, along};
        default:
            return {680 + across, along};
        }
    }
    Vertex Place()
    {
        if (Tame || !Chance(8))
            return Grid();
        if (Chance(8))
            return {Between(-1e6, 1e6), Between(-1e6, 1e6)};
        return {Between(0, 700), Between(0, 500)};
    }
    Vertex Other(const Vertex& place) // for a tame one another place than that
    {
        Vertex other = Place();
        if (Tame && other.X == place.X && other.Y == place.Y)
            other.X += 25;
        return other;
    }
    double Bulge()
    {
        if (!Chance(3))
            return 0;
        return Tame ? Between(-1.5, 1.5)
                    : std::stod(Pick({"1", "-1", "0.4142", "-2", "100", "1e-6", "-0.1"}));
    }
    std::string Outline(const std::string& layer)
    {
        std::vector<Vertex> vertices = {Place()};
        for (int left = 1 + Upto(5); left > 0; --left)
            vertices.push_back(Other(vertices.back()));
        for (Vertex& vertex : vertices)
            vertex.Bulge = Bulge();
        std::string header = Chance(2) ? Pair(70, "1") : std::string();
        if (!Tame && Chance(6))
            header += Pair(Chance(2) ? 40 : 41, 2.0);
        if (!Tame && Chance(8))
            vertices.resize(static_cast<std::size_t>(Upto(1)));
        return Polyline(layer, vertices, header);
    }
    std::string Contour(const std::string& layer) // closed, of lines, with an arc at times
    {
        const double x = 110 + 50.0 * Upto(7);
        const double y = 110 + 50.0 * Upto(3);
        if (Chance(3))
            return Line(layer, x, y, x + 100, y) + Arc(layer, x + 50, y, 50, 0, 180);
        return Rectangle(layer, x, y, 50.0 * (1 + Upto(2)), 50.0 * (1 + Upto(2)));
    }
    std::string Entity(const std::string& layer)
    {
        const Vertex from = Place();
        const Vertex to = Other(from);
        const double radius = 25.0 * (1 + Upto(3));
        switch (Upto(5)) {
        case 0:
            return Arc(layer, from.X, from.Y, Tame ? radius : radius * Upto(2), 90 * Upto(3), 90 * Upto(3));
        case 1:
            return Circle(layer, from.X, from.Y, radius);
        case 2:
            return Outline(layer);
        case 3:
            return Contour(layer);
        case 4:
            if (!Tame && Chance(3))
                return Polyline(layer, {from, to}, Pair(40, 2.0));
            [[fallthrough]];
        default:
            return Line(layer, from.X, from.Y, to.X, to.Y);
        }
    }
    // A rectangle behind its mark, two half circles, or a circle.
    std::string Pocket()
    {
        const std::string layer =
            "EXCAVZ5T71" + Pick({"K4", "K12.5", "R6", "L3", "", "K9M2", "K2LD9", "K4OZ3"});
        const double x = 150 + 50.0 * Upto(4);
        const double y = 150 + 50.0 * Upto(2);
        switch (Upto(2)) {
        case 0:
            return Rectangle(layer, x, y, 20 + Upto(80), 20 + Upto(80)) +
                   Polyline(layer, {{x - 1, y}, {x, y}}, Pair(40, 2.0));
        case 1:
            return Arc(layer, x, y, 30, 270, 90) + Arc(layer, x, y, 30, 90, 270);
        default:
            return Circle(layer, x, y, 5 + Upto(50));
        }
    }

    std::mt19937 Numbers;
    bool Tame;
    bool HasViews = false;
};

} // namespace kv::test
