#include "platform/instance.h"
namespace kv {
bool BecomeOnlyInstance(std::string_view)
{
    return true;
}
bool AskedToFront()
{
    return false;
}
} // namespace kv
