#include "network_connectivity.h"

#include <windows.h>
// after windows.h, which it needs
#include <netlistmgr.h>

#include "com_ptr.h"
#include "win_handles.h"

bool SystemReachesInternet() {
    const ComApartment apartment;
    ComPtr<INetworkListManager> manager;
    if (FAILED(CoCreateInstance(CLSID_NetworkListManager, nullptr, CLSCTX_ALL,
                                IID_INetworkListManager,
                                reinterpret_cast<void**>(manager.Put())))) {
        return false;
    }
    VARIANT_BOOL connected = VARIANT_FALSE;
    return SUCCEEDED(manager->IsConnectedToInternet(&connected)) && connected == VARIANT_TRUE;
}
