// Relies on nothing but the letters.
#include "shell/sequence_rules.h"

#include "platform/text.h"

namespace kv {

namespace {

struct ClassRow {
    char Letter;
    std::string_view Operations;
};
constexpr ClassRow Classes[] = {{'V', "bores of the face (V)"},
                                {'H', "bores of the edges (H)"},
                                {'G', "grooves (G)"},
                                {'R', "routes (R)"}};

} // namespace

std::string LettersLeftOut(std::string_view sequence)
{
    std::string left;
    for (const ClassRow& row : Classes) {
        if (sequence.find(row.Letter) == std::string_view::npos)
            left += row.Letter;
    }
    return left;
}

std::string SequenceQuestion(std::string_view sequence)
{
    std::string operations;
    for (const ClassRow& row : Classes) {
        if (sequence.find(row.Letter) == std::string_view::npos)
            operations.append(operations.empty() ? "" : ", ").append(row.Operations);
    }
    if (operations.empty())
        return {};
    return "The sequence \"" + std::string(Trim(sequence)) + "\" leaves out " + operations +
           ".\r\nWhat is left out gets into no program.\r\nDo you wish to leave the sequence so?";
}

} // namespace kv
