// Reads the settings; leaves at most a line in the report.
#include "import/import_setting.h"

#include "platform/numbers.h"
#include "platform/text.h"
#include "state/report.h"
#include "state/settings.h"

namespace kv {

ImportMode ModeOfImport()
{
    const std::string_view word = Trim(Config.Import);
    if (EqualIgnoringCase(word, "plain"))
        return ImportMode::Plain;
    return EqualIgnoringCase(word, "full") ? ImportMode::Full : ImportMode::Told;
}

void TellUnknownImport()
{
    const std::string_view word = Trim(Config.Import);
    if (!word.empty() && ModeOfImport() == ImportMode::Told && !EqualIgnoringCase(word, "told"))
        Tell(Message::ImportUnknown, {{"word", word}});
}

double ImportToleranceMm()
{
    constexpr double usual = 0.01, least = 1e-5, most = 1;
    const double tolerance = Val(Config.ImportTolerance);
    return tolerance >= least && tolerance <= most ? tolerance : usual;
}

} // namespace kv
