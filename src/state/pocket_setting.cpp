// Which word of the setting Pockets asks for pockets of any shape; reads the settings alone.
#include "state/pocket_setting.h"

#include "platform/text.h"
#include "state/settings.h"

namespace kv {

bool WantsPocketsOfAnyShape()
{
    return UpperCase(Trim(Config.Pockets)) == "ANY";
}

} // namespace kv
