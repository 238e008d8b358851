// How far a list or a batch of several drawings is: for the window's title, the report's last line and the
// console's progress.
#pragma once

#include <string>

namespace kv {

struct ListCount {
    long long Total = 0;  // drawings of the list that runs; 0: none runs, or a single drawing does
    long long Done = 0;   // of these, written or failed
    long long Failed = 0; // of the done ones
};
extern ListCount RunningList;

// A list of several drawings is counted while it lives; one of a single drawing is none.
struct CountedList {
    explicit CountedList(long long total);
    ~CountedList();
    CountedList(const CountedList&) = delete;
    CountedList& operator=(const CountedList&) = delete;
};
// A drawing of the list has ended, or one that was placed later has failed after all.
void CountFinishedJob();
// The report's last line of a list, "49 written, 1 failed, 4,951 not begun"; of a single drawing none.
void TellListCount();

std::string WithCommas(long long number); // "4,951"
// "47 of 5,000, 1 failed"; without the failures while there are none.
std::string ListProgressText(const ListCount& count);
// The window's title: the product's name, with the progress while a list runs.
std::string TitleOfRun();

} // namespace kv
