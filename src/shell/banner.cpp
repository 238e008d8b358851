// The first lines of the report: name and version, the controls that are served, and the notice.
// Relies on the report routine and its colour marks; leaves an empty message buffer.
#include "shell/banner.h"

#include "state/report.h"
#include "state/settings.h"

namespace kv {

void ShowBanner()
{
    const auto blank = [] { ReportMessage(1, ""); };
    blank();
    Tell(Message::BannerProduct, {{"product", ProductName}, {"version", ProductVersion}});
    blank();
    Tell(Message::BannerFor);
    Tell(Message::BannerCnc90);
    Tell(Message::BannerGenesis);
    blank();
    Tell(Message::BannerLook);
    Tell(Message::BannerWarranty);
    blank();
    ReportMessage(2, "");
}

} // namespace kv
