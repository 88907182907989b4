#include "values/data.h"

#include "base/out_of_memory.h"

#include <algorithm>

CFArray::CFArray(std::vector<const void*> list, bool objects)
    : Object(ozcg::TypeId::array), values(std::move(list)), holdsObjects(objects) {
    if (holdsObjects) std::for_each(values.begin(), values.end(), CFRetain);
}

CFArray::~CFArray() {
    if (holdsObjects) std::for_each(values.begin(), values.end(), CFRelease);
}

namespace {

bool isKnown(CFStringEncoding encoding) {
    return encoding == kCFStringEncodingUTF8 || encoding == kCFStringEncodingASCII;
}

} // namespace

CFTypeID CFStringGetTypeID(void) { return static_cast<CFTypeID>(ozcg::TypeId::string); }

const char* CFStringGetCStringPtr(CFStringRef string, CFStringEncoding encoding) {
    return string && isKnown(encoding) ? string->text.data() : nullptr;
}

CFTypeID CFDataGetTypeID(void) { return static_cast<CFTypeID>(ozcg::TypeId::data); }

CFDataRef CFDataCreate(CFAllocatorRef, const UInt8* bytes, CFIndex length) {
    if (length < 0 || (!bytes && length != 0)) return ozcg::noObject<const CFData>();
    return ozcg::noteFailure(ozcg::orWhenOutOfMemory(
        CFDataRef{}, [&] { return new CFData(std::vector<UInt8>(bytes, bytes + length)); }));
}

CFIndex CFDataGetLength(CFDataRef data) { return data ? static_cast<CFIndex>(data->bytes.size()) : 0; }

const UInt8* CFDataGetBytePtr(CFDataRef data) { return data ? data->bytes.data() : nullptr; }

const CFArrayCallBacks kCFTypeArrayCallBacks = {0};

CFTypeID CFArrayGetTypeID(void) { return static_cast<CFTypeID>(ozcg::TypeId::array); }

CFArrayRef CFArrayCreate(CFAllocatorRef, const void** values, CFIndex count,
                         const CFArrayCallBacks* callBacks) {
    if (count < 0 || (!values && count != 0)) return ozcg::noObject<const CFArray>();
    return ozcg::noteFailure(ozcg::orWhenOutOfMemory(CFArrayRef{}, [&] {
        return new CFArray(std::vector<const void*>(values, values + count), callBacks != nullptr);
    }));
}

CFIndex CFArrayGetCount(CFArrayRef array) { return array ? static_cast<CFIndex>(array->values.size()) : 0; }

const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index) {
    return index >= 0 && index < CFArrayGetCount(array) ? array->values[static_cast<std::size_t>(index)]
                                                        : nullptr;
}
