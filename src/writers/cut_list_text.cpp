// Rows of a cut list and its first line, which counts them. The first row goes through the whole text,
// since a list may begin and end in many ways; what that leaves is plain: a first line, rows, a line end.
// The rows that follow are put behind it. Relies on a first line that is shorter than HeaderWidth.
#include "writers/cut_list_text.h"

#include <algorithm>
#include <utility>

#include "platform/text.h"

namespace kv {

namespace {

constexpr std::size_t HeaderWidth = 20; // a first line that ends before is the header
constexpr std::string_view LineBreak = "\r\n";

bool IsLineEnd(char c)
{
    return c == '\r' || c == '\n';
}

std::string FirstLine(Long rows, bool metric)
{
    return "2.00, " + WholeText(rows) + (metric ? ",M" : ",D") + "\r\n";
}

// The last line of the text that reads so; npos for none.
std::size_t LineReading(std::string_view text, std::string_view line)
{
    for (std::size_t at = text.rfind(line); at != std::string_view::npos && !line.empty();
         at = at == 0 ? std::string_view::npos : text.rfind(line, at - 1)) {
        const bool begins = at == 0 || IsLineEnd(text[at - 1]);
        const std::size_t end = at + line.size();
        if (begins && (end == text.size() || IsLineEnd(text[end])))
            return at;
    }
    return std::string_view::npos;
}

} // namespace

std::string CutListWith(std::string list, std::string_view row, bool metric)
{
    while (!list.empty() && IsLineEnd(list.back()))
        list.pop_back();
    list.append(LineBreak).append(row);
    for (int i = 0; i < 2 && !list.empty() && IsLineEnd(list.front()); ++i)
        list.erase(0, 1);
    const Long firstEnd = Find(1, list, "\r");
    if (firstEnd < static_cast<Long>(HeaderWidth))
        list.erase(0, list.find('\n') + 1); // none: nothing is cut
    return FirstLine(InCount(list, '\r') + 1, metric) + list + "\r\n";
}

void CutListText::TakeApart(const std::string& list)
{
    const std::size_t begin = list.find('\n') + 1;
    Rows = list.substr(begin, list.size() - begin - LineBreak.size());
    LineEnds = InCount(Rows, '\r');
    Apart = true;
}

void CutListText::DropLineEnds()
{
    while (!Rows.empty() && IsLineEnd(Rows.back())) {
        LineEnds -= Rows.back() == '\r' ? 1 : 0;
        Rows.pop_back();
    }
}

void CutListText::Add(std::string_view row, bool metric)
{
    Metric = metric;
    if (!Apart) {
        TakeApart(CutListWith(std::exchange(Unread, {}), row, metric));
        return;
    }
    DropLineEnds();
    if (!Rows.empty()) {
        Rows += LineBreak;
        ++LineEnds;
    }
    Rows += row;
    LineEnds += InCount(row, '\r');
}

void CutListText::Replace(std::string_view earlier, std::string_view row, bool metric)
{
    const std::string_view list = Apart ? Rows : Unread;
    const std::size_t at = LineReading(list, earlier);
    if (at == std::string_view::npos) {
        Add(row, metric);
        return;
    }
    std::string all(list);
    all.replace(at, earlier.size(), row);
    if (!Apart) {
        TakeApart(CutListWith(std::move(all), {}, metric));
        DropLineEnds(); // of the empty row
        return;
    }
    LineEnds += InCount(row, '\r') - InCount(earlier, '\r');
    Rows = std::move(all);
    Metric = metric;
}

std::string CutListText::Text() const
{
    return Apart ? FirstLine(LineEnds + 1, Metric) + Rows + "\r\n" : Unread;
}

} // namespace kv
