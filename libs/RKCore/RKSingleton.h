#pragma once

#include <mutex>
#include <shared_mutex>

#include <memory>
#include <type_traits>

namespace RKSingletonDetail {
template <class T, class = void>
struct HasSetup : std::false_type {};
template <class T>
struct HasSetup<T, std::void_t<decltype(std::declval<T&>().setupSingleton())>> : std::true_type {};
}

/**
 * Process-wide instance of T, created on first use.
 *
 * Creation happens under a function-local read-write lock (readers look, the
 * first writer creates); after the constructor the instance's setup hook
 * `setupSingleton()` runs, if T has one, still under the lock. The instance is
 * destroyed at process exit. T may keep its constructor private and befriend
 * RKSingleton<T>.
 */
template <class T>
class RKSingleton
{
public:
    static T& instance()
    {
        // A standard lock rather than a Qt one, so that thread checkers see it.
        static std::shared_mutex lock;
        static std::unique_ptr<T> holder;
        {
            std::shared_lock<std::shared_mutex> reader(lock);
            if (holder)
                return *holder;
        }
        std::unique_lock<std::shared_mutex> writer(lock);
        if (!holder) {
            std::unique_ptr<T> created(new T());
            if constexpr (RKSingletonDetail::HasSetup<T>::value)
                created->setupSingleton();
            holder = std::move(created);
        }
        return *holder;
    }

protected:
    RKSingleton() = default;
    virtual ~RKSingleton() = default;
    RKSingleton(const RKSingleton&) = delete;
    RKSingleton& operator=(const RKSingleton&) = delete;
};
