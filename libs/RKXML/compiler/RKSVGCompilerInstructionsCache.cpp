#include "RKSVGCompilerInstructionsCache.h"

#include "RKSVGCompilerInstructionsFactory.h"

RKSVGCompilerInstructionsCache::RKSVGCompilerInstructionsCache() = default;
RKSVGCompilerInstructionsCache::~RKSVGCompilerInstructionsCache() = default;

RKSVGCompilerInstructions RKSVGCompilerInstructionsCache::instructions(const RKCalendariumContentKey& key)
{
    std::lock_guard<std::mutex> lock(myMutex);
    const auto found = myTable.constFind(key);
    if (found != myTable.constEnd())
        return found.value();
    const RKSVGCompilerInstructions created = createInstructions(key);
    myTable.insert(key, created);
    return created;
}

RKSVGCompilerInstructions RKSVGCompilerInstructionsCache::createInstructions(const RKCalendariumContentKey& key) const
{
    return RKSingleton<RKSVGCompilerInstructionsFactory>::instance().instructions(key);
}

int RKSVGCompilerInstructionsCache::size() const
{
    std::lock_guard<std::mutex> lock(myMutex);
    return myTable.size();
}

void RKSVGCompilerInstructionsCache::clear()
{
    std::lock_guard<std::mutex> lock(myMutex);
    myTable.clear();
    // Same order of locks as a build: this mutex, then the factory's.
    RKSingleton<RKSVGCompilerInstructionsFactory>::instance().clearCalendarDayNames();
}
