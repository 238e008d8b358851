// The template of a text program, field by field. Relies on nothing but text; leaves the source as it
// was read and keeps the replaced fields aside, so that joining is one walk over both.
#include "writers/template_fields.h"

#include <algorithm>
#include <utility>

#include "platform/text.h"

namespace kv {

namespace {

std::string_view FieldOfSource(const TemplateFields& fields, Long n)
{
    const auto index = static_cast<std::size_t>(n - 1);
    if (index >= fields.Starts.size())
        return {};
    const std::size_t start = fields.Starts[index];
    const std::size_t end =
        index + 1 < fields.Starts.size() ? fields.Starts[index + 1] - 1 : fields.Source.size();
    return std::string_view(fields.Source).substr(start, end - start);
}

} // namespace

TemplateFields CutFields(std::string text, char separator)
{
    TemplateFields fields;
    fields.Source = std::move(text);
    fields.Separator = separator;
    fields.Starts.reserve(1 + static_cast<std::size_t>(std::ranges::count(fields.Source, separator)));
    fields.Starts.push_back(0);
    for (std::size_t at = fields.Source.find(separator); at != std::string::npos;
         at = fields.Source.find(separator, at + 1))
        fields.Starts.push_back(at + 1);
    fields.Count = ToLong(static_cast<double>(fields.Starts.size()));
    return fields;
}

std::string_view FieldText(const TemplateFields& fields, Long n)
{
    if (n < 1 || n > fields.Count)
        return {};
    const auto replaced = fields.Replaced.find(n);
    return replaced == fields.Replaced.end() ? FieldOfSource(fields, n) : std::string_view(replaced->second);
}

void ReplaceField(TemplateFields& fields, Long n, std::string text)
{
    if (n >= 1 && n <= fields.Count)
        fields.Replaced[n] = std::move(text);
}

void PutField(TemplateFields& fields, Long n, std::string text)
{
    if (n > fields.Count)
        fields.Count = n;
    ReplaceField(fields, n, std::move(text));
}

// Walks the source from hit to hit, whatever the number of its fields.
Long FieldHolding(const TemplateFields& fields, std::string_view part)
{
    const auto replaced =
        std::ranges::find_if(fields.Replaced, [&](const auto& field) { return Holds(field.second, part); });
    const Long first = replaced == fields.Replaced.end() ? 0 : replaced->first;
    for (std::size_t at = fields.Source.find(part); at != std::string::npos;
         at = fields.Source.find(part, at + 1)) {
        const auto behind = std::ranges::upper_bound(fields.Starts, at);
        const Long n = static_cast<Long>(behind - fields.Starts.begin());
        if (first != 0 && n > first)
            break;
        if (!fields.Replaced.contains(n))
            return n;
    }
    return first;
}

std::string JoinedFields(const TemplateFields& fields)
{
    std::string text;
    text.reserve(fields.Source.size());
    const auto inSource = static_cast<Long>(fields.Starts.size());
    std::size_t taken = 0; // of the source
    for (const auto& [n, replacement] : fields.Replaced) {
        if (n > inSource)
            break;
        const std::size_t start = fields.Starts[static_cast<std::size_t>(n - 1)];
        text.append(fields.Source, taken, start - taken);
        text += replacement;
        taken = start + FieldOfSource(fields, n).size();
    }
    text.append(fields.Source, taken);
    for (Long n = inSource + 1; n <= fields.Count; ++n) {
        text += fields.Separator;
        text += FieldText(fields, n);
    }
    return text;
}

} // namespace kv
