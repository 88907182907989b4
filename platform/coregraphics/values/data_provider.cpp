#include "values/data_provider.h"

#include "base/out_of_memory.h"
#include "values/data.h"

using ozcg::Object;
using ozcg::Ref;

CFTypeID CGDataProviderGetTypeID(void) { return static_cast<CFTypeID>(ozcg::TypeId::dataProvider); }

CGDataProviderRef CGDataProviderCreateWithData(void* info, const void* data, size_t size,
                                               CGDataProviderReleaseDataCallback releaseData) {
    if (!data && size != 0) return ozcg::noObject<CGDataProvider>();
    const std::span content(static_cast<const uint8_t*>(data), size);
    return ozcg::noteFailure(ozcg::create<CGDataProvider>(content, releaseData, info));
}

CGDataProviderRef CGDataProviderCreateWithCFData(CFDataRef data) {
    if (!data) return ozcg::createdFrom<CGDataProvider>(data);
    return ozcg::noteFailure(
        ozcg::create<CGDataProvider>(Ref<const Object>::retaining(data), std::span(data->bytes)));
}

CGDataProviderRef CGDataProviderRetain(CGDataProviderRef provider) { return ozcg::retained(provider); }

void CGDataProviderRelease(CGDataProviderRef provider) { ozcg::released(provider); }

CFDataRef CGDataProviderCopyData(CGDataProviderRef provider) {
    if (!provider) return nullptr;
    // What an object of ours holds never changes, so it is shared. Another provider may have the caller's
    // bytes.
    if (provider->owner && provider->owner->typeId() != ozcg::TypeId::dataProvider)
        return ozcg::noteFailure(ozcg::create<const CFData>(provider->owner, provider->bytes));
    return CFDataCreate(kCFAllocatorDefault, provider->bytes.data(),
                        static_cast<CFIndex>(provider->bytes.size()));
}
