// Questions and message boxes, shown by the front end. Without one a box is kept as a report line by
// whoever sets the hook, and a question is answered No.
#pragma once

#include <string_view>

namespace kv {

enum class BoxIcon { None, Information, Warning, Error };

struct DialogHooks {
    void (*Box)(std::string_view text, std::string_view title, BoxIcon icon) = nullptr;
    // The detail says what exactly is asked about; it may be empty.
    bool (*Ask)(std::string_view text, std::string_view title, std::string_view detail) = nullptr;
};
extern DialogHooks Dialogs;

void ShowBox(std::string_view text, std::string_view title, BoxIcon icon);
// No without a front end.
bool AskYesNo(std::string_view text, std::string_view title, std::string_view detail = {});

} // namespace kv
