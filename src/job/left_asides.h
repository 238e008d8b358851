// What is written aside must be found again should the process end before it has moved or dropped it, and no
// start may look through folders of many thousand programs for that. So a mark in the settings' folder, which
// is small, says that something is aside: it is on the disk before the first copy is, and goes when none is
// left. A start that finds the mark of an ended process looks everywhere.
#pragma once

#include <string>

namespace kv {

// Before anything of the installation is written aside.
void MarkAsides(const std::string& installation);
bool IsMarked(const std::string& installation);
// When nothing is aside any more.
void DropAsideMarks();
// Around a file that is replaced by itself.
class AsideMark {
  public:
    explicit AsideMark(const std::string& installation);
    ~AsideMark();
    AsideMark(const AsideMark&) = delete;
    AsideMark& operator=(const AsideMark&) = delete;

  private:
    bool Alone; // no other mark stands
};

// Where an ended process has left its mark: finishes its moves and deletes its copies in all folders that the
// settings name, and in those of the mark. What cannot be cleared now keeps the mark for the next start.
void ClearLeftAsides();

} // namespace kv
