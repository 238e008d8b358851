// A text program's template as numbered fields: the text cut at each carriage return, fields counted
// from 1. A field keeps the line feed at its front, and a new text brings its own.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/numbers.h"

namespace kv {

// The text stays in one piece: a template may be one of many megabytes.
struct TemplateFields {
    std::string Source;
    char Separator = '\r';
    std::vector<std::size_t> Starts;      // of the fields, in Source; element 0 is field 1
    std::map<Long, std::string> Replaced; // new texts by field, also of fields behind the source's
    Long Count = 0;
};

// An empty text is one empty field.
TemplateFields CutFields(std::string text, char separator = '\r');
// Text of field n, empty where there is none. Valid until that field is replaced.
std::string_view FieldText(const TemplateFields& fields, Long n);
// A field that is not there is left out.
void ReplaceField(TemplateFields& fields, Long n, std::string text);
// A field that is not there is added, with empty ones in front of it.
void PutField(TemplateFields& fields, Long n, std::string text);
// The first field that holds the text, in which no separator stands; 0 when none does.
Long FieldHolding(const TemplateFields& fields, std::string_view part);
// Field 0: the fields with the separator between them.
std::string JoinedFields(const TemplateFields& fields);

} // namespace kv
