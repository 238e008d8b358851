// The system's list object is made with the first progress and lives as long as the process.
#include "platform/taskbar.h"

#include <windows.h>

#include <shobjidl.h>

namespace kv {

namespace {

// Null: this system has none.
ITaskbarList3* Taskbar()
{
    static ITaskbarList3* const list = [] {
        ITaskbarList3* made = nullptr;
        const HRESULT ready = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        if (FAILED(ready) && ready != RPC_E_CHANGED_MODE)
            return made;
        if (FAILED(CoCreateInstance(CLSID_TaskbarList, nullptr, CLSCTX_INPROC_SERVER, IID_ITaskbarList3,
                                    reinterpret_cast<void**>(&made))))
            return static_cast<ITaskbarList3*>(nullptr);
        if (FAILED(made->HrInit())) {
            made->Release();
            made = nullptr;
        }
        return made;
    }();
    return list;
}

} // namespace

void ShowTaskbarProgress(std::uintptr_t window, long long done, long long total, bool failures)
{
    ITaskbarList3* const list = Taskbar();
    const auto handle = reinterpret_cast<HWND>(window);
    if (list == nullptr || handle == nullptr)
        return;
    list->SetProgressState(handle, total <= 0 ? TBPF_NOPROGRESS : failures ? TBPF_ERROR : TBPF_NORMAL);
    if (total > 0)
        list->SetProgressValue(handle, static_cast<ULONGLONG>(done), static_cast<ULONGLONG>(total));
}

} // namespace kv
