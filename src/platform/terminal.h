// Whether a person watches a standard stream: colours and progress lines are for terminals alone.
#pragma once

namespace kv {

enum class StandardStream { Output, Error };

bool IsTerminal(StandardStream stream);

} // namespace kv
