// Random drawings of both kinds: routes of all sorts, and panels with bores, grooves, edge bores and contours
// whose numbers have all the digits that a rotated drawing has. A seed is a drawing, on every system.
#pragma once

#include <cmath>
#include <numbers>
#include <random>
#include <string>
#include <vector>

#include "routes/random_routes.h"
#include "support/dxf.h"

namespace kv::test {

class RandomPanel {
  public:
    explicit RandomPanel(unsigned seed) : Numbers(seed), Turn(Between(0, 2 * std::numbers::pi)) {}

    std::string Drawn()
    {
        std::string entities = Polyline("BORDERZ18", {{50, 50}, {850, 50}, {850, 550}, {50, 550}, {50, 50}});
        for (int left = Upto(4); left > 0; --left)
            entities += Row();
        for (int left = Upto(6); left > 0; --left)
            entities += Circle("VBOREZ" + Depth(), Along(), Across(), Between(2, 20));
        for (int left = Upto(3); left > 0; --left)
            entities += Line("GROOVED4Z8", 50, Across(), Between(400, 850), Across());
        for (int left = Upto(2); left > 0; --left)
            entities += Line("HBOREZ9D8", 50, Across(), Between(70, 90), Across());
        for (int left = Upto(3); left > 0; --left)
            entities += Contour();
        for (int left = Upto(2); left > 0; --left)
            entities += Arc("ROUTEZ" + Depth() + "T21", Along(), Across(), Between(10, 90), Between(0, 360),
                            Between(0, 360));
        if (Upto(3) == 0)
            entities += Circle("EXCAVZ6D12T30", Along(), Across(), Between(20, 80));
        return Drawing(entities);
    }

  private:
    int Upto(int last) { return static_cast<int>(Numbers() % static_cast<unsigned>(last + 1)); }
    // Not by the library's distributions, which may differ from one to another.
    double Between(double low, double high)
    {
        return low + (high - low) * static_cast<double>(Numbers() >> 5) / 134217728;
    }
    double Along() { return Between(60, 840); }
    double Across() { return Between(60, 540); }
    std::string Depth() { return std::to_string(1 + Upto(18)); }

    std::string Row() // of a system, at times askew
    {
        const double x = Along(), y = Across(), askew = Upto(2) == 0 ? Between(-0.4, 0.4) : 0;
        std::string bores;
        for (int i = Upto(12); i >= 0; --i)
            bores += Circle("VBOREZ12", x + 32 * i * std::cos(askew), y + 32 * i * std::sin(askew), 2.5);
        return bores;
    }
    std::string Contour() // a polygon with bulges, turned
    {
        const double x = Along(), y = Across(), radius = Between(15, 120);
        const int corners = 3 + Upto(6);
        std::vector<Vertex> vertices;
        for (int i = 0; i <= corners; ++i) {
            const double angle = Turn + 2 * std::numbers::pi * (i % corners) / corners;
            vertices.push_back({x + radius * std::cos(angle), y + radius * std::sin(angle),
                                Upto(2) == 0 ? Between(-1, 1) : 0});
        }
        const std::string layer = "ROUTEZ" + Depth() + "T22" + (Upto(1) == 0 ? "R4" : "LD15");
        return Upto(1) == 0 ? Polyline(layer, vertices) : Lwpolyline(layer, vertices);
    }

    std::mt19937 Numbers;
    double Turn;
};

inline std::string RandomDrawing(unsigned seed)
{
    if (seed % 2 == 0)
        return RandomPanel(seed).Drawn();
    return RandomRouteDrawing(seed, seed % 4 == 1).Drawn();
}

} // namespace kv::test
