// Random drawings that leave something to the next one and take something over. A seed is a drawing.
#pragma once

#include <random>
#include <string>
#include <vector>

#include "support/dxf.h"

namespace kv::test {

// A drawing with something of all that outlives one: instructions with and without title, flags of the
// border or none, tools and diameters left out, fields of the cut list, work in the edges, no work at all.
class LeavingDrawing {
  public:
    explicit LeavingDrawing(unsigned seed) : Numbers(seed) {}

    std::string Drawn()
    {
        std::string entities;
        if (OneIn(4))
            entities += Instructions(Directives(), Pick({"INFO", "ORDERS"}));
        else if (OneIn(4))
            entities += TextAt(Pick({"INFO", "ORDERS", "MYINFO"}), 0, 0, Pick(Lines));
        entities += OneIn(3) ? PanelSolid("PANEL", 10, 20, 600, 400, 18)
                             : Rectangle("BORDER" + Flags(), 10, 20, 600, 400);
        if (OneIn(6))
            return Drawing(entities);
        for (int left = Below(4); left >= 0; --left)
            entities += Work();
        return Drawing(entities);
    }

  private:
    int Below(int limit) { return static_cast<int>(Numbers() % static_cast<unsigned>(limit)); }
    bool OneIn(int n) { return Below(n) == 0; }
    std::string Pick(const std::vector<std::string>& from)
    {
        return from[static_cast<std::size_t>(Below(static_cast<int>(from.size())))];
    }
    std::vector<std::string> Directives()
    {
        std::vector<std::string> lines;
        for (int left = Below(3); left >= 0; --left)
            lines.push_back(Pick(Lines));
        return lines;
    }
    std::string Flags()
    {
        return Pick({"", "", "_OF7", "_OF12", "_OP", "_SQRHGV", "_OL", "_GS", "_GE", "_URZ18", "_NO"});
    }
    std::string Codes()
    {
        return Pick({"Z5", "Z12", "Z9"}) + Pick({"", "T71", "T72", "D8"}) + Pick({"", "", "S6", "F500"});
    }
    std::string Work()
    {
        const double x = 60 + 10 * Below(50), y = 60 + 10 * Below(30);
        switch (Below(8)) {
        case 0:
            return Circle("VBORE " + Codes(), x, y, 4) + Circle("VBORE " + Codes(), x + 32, y, 4);
        case 1:
            return Line("GROOVE D8Z6", 20, y, 500, y);
        case 2:
            return Line("HBORE", x, 420, x, 390) +
                   Line("HBORE Z9" + Pick({"", "T61", "T161S6"}), x - 4, 390, x + 4, 390);
        case 3:
            return Circle("ROUTE" + Codes(), x, y, 20);
        case 4:
            return Arc("ROUTE" + Codes(), x, y, 20, 0, 10 + 10 * Below(30));
        case 5:
            return Polyline("ROUTE" + Pick({"", "1", "-5", "9995"}) + Codes(),
                            {{x, y}, {x + 40, y}, {x + 40, y + 30, 0.5}});
        default:
            return Line("ROUTE" + Codes(), x, y, x + 50, y + 10 * Below(3));
        }
    }

    std::mt19937 Numbers;
    static inline const std::vector<std::string> Lines = {
        "OUTFIT=4", "DESCR=OAK",  "FLAG=3",  "PTS 7=OAK",     "PTS FIELD7=ASH", "PTS FIELD9=ASH", "PTS 9=X",
        "NAME=",    "LEAD=ON 20", "VAR A=1", "LAYER X=ROUTE", "NOCODE",         "OP 1=Z5T71",     "SCALE=2",
    };
};

} // namespace kv::test
