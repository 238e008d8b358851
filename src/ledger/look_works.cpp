// Relies on the looks as the layer rules have left them.
#include "ledger/look_works.h"

#include "state/drawn_entities.h"
#include "state/drawn_names.h"

namespace kv {

LookWorks::LookWorks()
{
    for (Long number = 0; number <= LastLook(); ++number) {
        const EntityLook& look = LookOfNumber(number);
        LookWork work;
        work.Kind = NameOfNumber(look.Kind);
        work.Work = WorkOfLayer(NameOfNumber(look.State), work.Kind);
        work.Asks = AsksForWork(work.Work);
        work.IsText = IsTextKind(work.Kind);
        Works.push_back(work);
    }
}

const LookWork& LookWorks::Of(Long drawn) const
{
    return Works[static_cast<std::size_t>(DrawnEntities[drawn].Look)];
}

} // namespace kv
