#include "shell/finding_marks.h"

#include <utility>

#include "job/program_check.h"
#include "platform/text.h"

namespace kv {

namespace {

constexpr double Arm = 6; // mm

DrawnShape CrossAt(const PathPoint& at)
{
    DrawnShape cross;
    for (const double side : {-Arm, Arm}) {
        Move line;
        line.From = {at.X - Arm, at.Y - side};
        line.To = {at.X + Arm, at.Y + side};
        cross.Way.push_back(line);
    }
    cross.IsLeft = true;
    return cross;
}

} // namespace

void AddFindingMarks(std::vector<DrawnShape>& drawn)
{
    if (!ProofOfJob.IsDone)
        return;
    for (const Finding& finding : ProofOfJob.Found.Findings) {
        if (finding.On != Plane::Surface || finding.Kind == FindingKind::NotUnderstood)
            continue;
        DrawnShape cross = CrossAt(finding.At);
        cross.Text = "check: " + FindingName(finding.Kind) +
                     (finding.Millimetres > 0 ? ", " + LengthForPeople(finding.Millimetres) + " mm" : "") +
                     (finding.What.empty() ? "" : ", " + Utf8FromAnsi(finding.What));
        drawn.push_back(std::move(cross));
    }
}

} // namespace kv
