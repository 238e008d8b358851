// The order of operation classes that a person chooses, as far as it can be wrong.
#pragma once

#include <string>
#include <string_view>

namespace kv {

// The letters of "VHGR" that the sequence lacks: their operations get into no program.
std::string LettersLeftOut(std::string_view sequence);
// The question whether the sequence is to stay so; empty when it lacks no letter.
std::string SequenceQuestion(std::string_view sequence);

} // namespace kv
