#include "platform/directory.h"
namespace kv {
Long FCount(std::string_view)
{
    return 0;
}
void ReadFileX(std::string_view, Long, std::vector<DirectoryEntry>&) {}
bool Exist(std::string_view)
{
    return false;
}
bool GoodDrive(std::string_view)
{
    return true;
}
} // namespace kv
