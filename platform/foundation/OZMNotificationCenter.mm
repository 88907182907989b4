// GNUstep's default notification center sends to observers that another thread may be deallocating; Apple's
// refers to observers weakly. The class here becomes the class of the default center. Its `removeObserver:`
// waits until no other thread is inside a removed handler of that observer, so that an observer which removes
// itself first thing in its dealloc is whole whenever it is called. Hence a handler must not wait for a
// thread that removes its observer. A handler that removes its own observer does not wait.
#import <Foundation/Foundation.h>

#include <objc/runtime.h>

#include <algorithm>
#include <condition_variable>
#include <iterator>
#include <list>
#include <memory>
#include <mutex>
#include <thread>
#include <unordered_map>
#include <utility>
#include <vector>

namespace {

struct Observation {
    const id observer; // as `object` borrowed
    const SEL selector;
    NSString* const name; // the table's key; nil stands for every name
    const id object;      // nil stands for every sender
    // Guarded by the table's mutex.
    bool isRemoved = false;
    std::vector<std::thread::id> threads{}; // those inside the handler
};

struct NameHash {
    size_t operator()(NSString* name) const { return name.hash; }
};
struct NameEqual {
    bool operator()(NSString* a, NSString* b) const { return a == b || [a isEqualToString:b]; }
};

class ObservationTable {
public:
    void add(id observer, SEL selector, NSString* name, id object) {
        const std::lock_guard lock(m_mutex);
        auto named = m_byName.find(name);
        if (named == m_byName.end()) named = m_byName.emplace([name copy], Observations()).first;
        named->second.push_back(
            std::make_shared<Observation>(Observation{observer, selector, named->first, object}));
        m_byObserver.emplace(observer, std::prev(named->second.end()));
    }

    /// Nil stands for every name and every object.
    void remove(id observer, NSString* name, id object) {
        std::unique_lock lock(m_mutex);
        auto [entry, end] = m_byObserver.equal_range(observer);
        while (entry != end) {
            const std::shared_ptr<Observation> observation = *entry->second;
            if ((name && !NameEqual()(name, observation->name)) ||
                (object && object != observation->object)) {
                ++entry;
                continue;
            }
            observation->isRemoved = true;
            if (!observation->threads.empty()) m_leaving.push_back(observation);
            eraseFromNames(entry->second);
            entry = m_byObserver.erase(entry);
        }
        m_left.wait(lock, [&] { return !mustWaitFor(observer); });
    }

    void deliver(NSNotification* notification) {
        for (const std::shared_ptr<Observation>& observation : matching(notification)) {
            const Delivery delivery(*this, observation);
            if (delivery.isWanted())
                [observation->observer performSelector:observation->selector withObject:notification];
        }
    }

private:
    using Observations = std::list<std::shared_ptr<Observation>>;

    /// Marks an observation, unless it was removed, as being inside its handler.
    class Delivery {
    public:
        Delivery(ObservationTable& table, const std::shared_ptr<Observation>& observation)
            : m_table(table), m_observation(observation) {
            const std::lock_guard lock(m_table.m_mutex);
            m_isWanted = !m_observation->isRemoved;
            if (m_isWanted) m_observation->threads.push_back(std::this_thread::get_id());
        }
        ~Delivery() {
            if (!m_isWanted) return;
            const std::lock_guard lock(m_table.m_mutex);
            std::vector<std::thread::id>& threads = m_observation->threads;
            threads.erase(std::find(threads.begin(), threads.end(), std::this_thread::get_id()));
            if (!m_observation->isRemoved) return;
            if (threads.empty()) std::erase(m_table.m_leaving, m_observation);
            m_table.m_left.notify_all();
        }
        Delivery(const Delivery&) = delete;
        Delivery& operator=(const Delivery&) = delete;

        bool isWanted() const { return m_isWanted; }

    private:
        ObservationTable& m_table;
        const std::shared_ptr<Observation>& m_observation;
        bool m_isWanted;
    };

    std::vector<std::shared_ptr<Observation>> matching(NSNotification* notification) {
        NSString* const name = notification.name;
        const id object = notification.object;
        std::vector<std::shared_ptr<Observation>> found;
        const std::lock_guard lock(m_mutex);
        for (NSString* key : {name, static_cast<NSString*>(nil)}) {
            const auto named = m_byName.find(key);
            if (named == m_byName.end()) continue;
            std::copy_if(named->second.begin(), named->second.end(), std::back_inserter(found),
                         [&](const auto& each) { return !each->object || each->object == object; });
        }
        return found;
    }

    void eraseFromNames(Observations::iterator place) {
        const auto named = m_byName.find((*place)->name);
        named->second.erase(place);
        if (!named->second.empty()) return;
        NSString* const key = named->first;
        m_byName.erase(named);
        [key release];
    }

    /// Whether other threads are inside the observer's handlers, and this one isn't: it would wait for
    /// itself, or for another one that removes the observer from inside a handler as well.
    bool mustWaitFor(id observer) const {
        bool isInside = false;
        for (const std::shared_ptr<Observation>& each : m_leaving) {
            if (each->observer != observer) continue;
            for (const std::thread::id thread : each->threads) {
                if (thread == std::this_thread::get_id()) return false;
                isInside = true;
            }
        }
        return isInside;
    }

    std::mutex m_mutex;             // guards all of the below
    std::condition_variable m_left; // when a removed observation's handler has returned
    std::unordered_map<NSString*, Observations, NameHash, NameEqual> m_byName; // owns its keys
    std::unordered_multimap<id, Observations::iterator> m_byObserver;
    std::vector<std::shared_ptr<Observation>> m_leaving; // removed, but still inside their handlers
};

/// The default center's. Kept for the life of the process.
ObservationTable& observations() {
    static ObservationTable& table = *new ObservationTable;
    return table;
}

} // namespace

// Has no instance variables: it takes over an object that exists. What was registered before, by GNUstep
// itself, stays with the superclass, which also posts; there this class observes everything.
@interface OZMNotificationCenter : NSNotificationCenter
@end

@implementation OZMNotificationCenter

// At this time there is one thread. Left to itself, GNUstep makes the center when the first thread registers,
// and a second one that registers meanwhile uses it without synchronisation.
+ (void)load {
    NSNotificationCenter* const center = [NSNotificationCenter defaultCenter];
    [center addObserver:self selector:@selector(deliver:) name:nil object:nil];
    object_setClass(center, self);
}

+ (void)deliver:(NSNotification*)notification {
    observations().deliver(notification);
}

- (void)addObserver:(id)observer selector:(SEL)selector name:(NSString*)name object:(id)object {
    if (!observer || !selector)
        [NSException raise:NSInvalidArgumentException
                    format:@"attempt to add an observer without %@", observer ? @"selector" : @"object"];
    observations().add(observer, selector, name, object);
}

- (void)removeObserver:(id)observer {
    [self removeObserver:observer name:nil object:nil];
}

- (void)removeObserver:(id)observer name:(NSString*)name object:(id)object {
    if (!observer) return;
    [super removeObserver:observer name:name object:object];
    observations().remove(observer, name, object);
}

@end
