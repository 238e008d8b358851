// Keeps by key, in upper case; settings are found whatever letters the file has.
#include "state/typed_texts.h"

#include <functional>
#include <map>
#include <utility>

#include "platform/number_texts.h"
#include "platform/text.h"

namespace kv {

namespace {

std::map<std::string, TypedSetting, std::less<>> Kept;

// A number that was left out is none that was replaced.
bool SaysTheSame(const TypedSetting& typed)
{
    return IsReadToItsEnd(typed.Text) && (Trim(typed.Text).empty() || Val(typed.Text) == Val(typed.Taken));
}

} // namespace

void KeepTypedText(TypedSetting typed)
{
    std::string name = UpperCase(typed.Key);
    Kept.insert_or_assign(std::move(name), std::move(typed));
}

void SettleTypedText(std::string_view key, std::string_view taken)
{
    const auto kept = Kept.find(UpperCase(key));
    if (kept == Kept.end())
        return;
    kept->second.Taken = taken;
    if (SaysTheSame(kept->second))
        Kept.erase(kept);
}

void ForgetTypedText(std::string_view key)
{
    if (const auto kept = Kept.find(UpperCase(key)); kept != Kept.end())
        Kept.erase(kept);
}

const TypedSetting* FindTypedText(std::string_view key, std::string_view taken)
{
    const auto kept = Kept.find(UpperCase(key));
    return kept != Kept.end() && kept->second.Taken == taken ? &kept->second : nullptr;
}

} // namespace kv
