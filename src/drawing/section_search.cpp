// Looks for the head of the section line by line, and lets the drawing's facts be read on the way. Leaves
// the scanner on the line that names it.
#include "drawing/section_search.h"

#include "drawing/drawing_facts.h"
#include "platform/text.h"

namespace kv {

namespace {

constexpr std::string_view SectionWord = "ENTITIES"; // holds what is drawn

// The three lines in front of a section's name: "0", "SECTION", "2".
class SectionHead {
  public:
    bool IsComplete() const { return Seen == 3; }
    void Take(std::string_view line)
    {
        constexpr std::size_t longest = 16; // with its blanks; nearly every line that is none is longer
        const std::string_view word = line.size() <= longest ? Trim(line) : std::string_view();
        if (Seen == 1 && word == "SECTION")
            Seen = 2;
        else if (Seen == 2 && word == "2")
            Seen = 3;
        else
            Seen = word == "0" ? 1 : 0;
    }

  private:
    int Seen = 0;
};

} // namespace

bool FindEntities(LineScanner& scanner)
{
    SectionHead head;
    FactsReader facts;
    bool isHeld = false;
    while (!scanner.AtEnd && scanner.Outcome.Ok()) {
        const std::string_view line = scanner.NextLine();
        if (Holds(line, SectionWord)) {
            if (head.IsComplete())
                return true;
            isHeld = true;
        }
        if (head.IsComplete())
            facts.BeginSection(Trim(line));
        else if (facts.IsReading())
            facts.Take(line);
        head.Take(line);
    }
    return isHeld && scanner.Outcome.Ok() && !scanner.AgainAt(SectionWord).empty();
}

} // namespace kv
