#include "zxhost/rtti.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

namespace {

typedef std::pair<std::wstring, std::wstring> Key;

// Records are held by pointer so that a pointer handed out by FindClassImpl
// survives registrations of other classes.
struct Registry {
    std::mutex lock;
    std::map<Key, std::unique_ptr<SZxRTTIClassImpl>> classes;
};

Registry& TheRegistry()
{
    static Registry r;
    return r;
}

bool Valid(const wchar_t* s) { return s && *s; }

} // namespace

int CZxRTTI::RegisterClassImpl(const wchar_t* interfaceName, const wchar_t* className, const CZxVariant& metadata)
{
    if (!Valid(interfaceName) || !Valid(className))
        return -9;
    std::unique_ptr<SZxRTTIClassImpl> impl(new SZxRTTIClassImpl{interfaceName, className, metadata});
    Registry& r = TheRegistry();
    std::lock_guard<std::mutex> hold(r.lock);
    r.classes[Key(interfaceName, className)] = std::move(impl);
    return 0;
}

int CZxRTTI::UnregisterClassImpl(const wchar_t* interfaceName, const wchar_t* className)
{
    if (!Valid(interfaceName) || !Valid(className))
        return -9;
    Registry& r = TheRegistry();
    std::lock_guard<std::mutex> hold(r.lock);
    return r.classes.erase(Key(interfaceName, className)) ? 0 : -9;
}

const SZxRTTIClassImpl* CZxRTTI::FindClassImpl(const wchar_t* interfaceName, const wchar_t* className)
{
    if (!Valid(interfaceName) || !Valid(className))
        return nullptr;
    Registry& r = TheRegistry();
    std::lock_guard<std::mutex> hold(r.lock);
    auto it = r.classes.find(Key(interfaceName, className));
    return it == r.classes.end() ? nullptr : it->second.get();
}
