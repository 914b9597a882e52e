#include "zxhost/moduleevents.h"

#include <mutex>
#include <string>
#include <vector>

namespace {
struct Subscription {
    std::string event;
    PFN_ZxModuleEvent handler;
    void* context;
};
std::mutex g_lock;
std::vector<Subscription>& Subscriptions()
{
    static std::vector<Subscription> s;
    return s;
}
} // namespace

bool ZX_SubscribeModuleEvent(const char* event, PFN_ZxModuleEvent handler, void* context)
{
    if (!event || !handler)
        return false;
    const std::lock_guard<std::mutex> lock(g_lock);
    for (const Subscription& s : Subscriptions())
        if (s.event == event && s.handler == handler && s.context == context)
            return true;
    Subscriptions().push_back({event, handler, context});
    return true;
}

bool ZX_UnsubscribeModuleEvent(const char* event, PFN_ZxModuleEvent handler, void* context)
{
    if (!event)
        return false;
    const std::lock_guard<std::mutex> lock(g_lock);
    auto& subs = Subscriptions();
    for (auto it = subs.begin(); it != subs.end(); ++it)
        if (it->event == event && it->handler == handler && it->context == context) {
            subs.erase(it);
            return true;
        }
    return false;
}

int ZX_RaiseModuleEvent(const char* event, void* argument)
{
    if (!event)
        return 0;
    // Subscribers run outside the lock: a handler may subscribe or raise in turn.
    std::vector<Subscription> called;
    {
        const std::lock_guard<std::mutex> lock(g_lock);
        for (const Subscription& s : Subscriptions())
            if (s.event == event)
                called.push_back(s);
    }
    for (const Subscription& s : called)
        s.handler(event, argument, s.context);
    return int(called.size());
}
