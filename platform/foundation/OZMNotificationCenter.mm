// GNUstep's default notification center calls observers even while another thread deallocates them; Apple's
// refers to observers weakly. The class below becomes the class of the default center. Its `removeObserver:`
// waits until no other thread is inside a removed handler of that observer. An observer that removes itself
// at the start of its dealloc is therefore intact whenever it is called. In return, a handler must not wait
// for a thread that removes its observer. A handler that removes its own observer does not wait.
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
    const id observer; // borrowed, like `object`
    const SEL selector;
    NSString* const name; // owned by the table; nil matches every name
    const id object;      // nil matches every sender
    // Guarded by the table's mutex.
    bool isRemoved = false;
    std::vector<std::thread::id> threads{}; // the threads inside the handler
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

    /// A nil name or object matches all.
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
            if (!observation->threads.empty()) m_removedButRunning.push_back(observation);
            eraseFromNames(entry->second);
            entry = m_byObserver.erase(entry);
        }
        m_handlerReturned.wait(lock, [&] { return !mustWaitFor(observer); });
    }

    void deliver(NSNotification* notification) {
        for (const std::shared_ptr<Observation>& observation : matching(notification)) {
            const Delivery delivery(*this, observation);
            if (delivery.mustDeliver())
                [observation->observer performSelector:observation->selector withObject:notification];
        }
    }

private:
    using Observations = std::list<std::shared_ptr<Observation>>;

    /// Unless an observation was removed, records for its own lifetime that this thread is inside the
    /// handler.
    class Delivery {
    public:
        Delivery(ObservationTable& table, const std::shared_ptr<Observation>& observation)
            : m_table(table), m_observation(observation) {
            const std::lock_guard lock(m_table.m_mutex);
            m_mustDeliver = !m_observation->isRemoved;
            if (m_mustDeliver) m_observation->threads.push_back(std::this_thread::get_id());
        }
        ~Delivery() {
            if (!m_mustDeliver) return;
            const std::lock_guard lock(m_table.m_mutex);
            std::vector<std::thread::id>& threads = m_observation->threads;
            threads.erase(std::find(threads.begin(), threads.end(), std::this_thread::get_id()));
            if (!m_observation->isRemoved) return;
            if (threads.empty()) std::erase(m_table.m_removedButRunning, m_observation);
            m_table.m_handlerReturned.notify_all();
        }
        Delivery(const Delivery&) = delete;
        Delivery& operator=(const Delivery&) = delete;

        bool mustDeliver() const { return m_mustDeliver; }

    private:
        ObservationTable& m_table;
        const std::shared_ptr<Observation>& m_observation;
        bool m_mustDeliver;
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

    /// True if other threads are inside removed handlers of the observer, but this thread is not. A thread
    /// inside one must not wait: it would wait for itself, or for another thread that removes the observer
    /// from inside a handler and waits too.
    bool mustWaitFor(id observer) const {
        bool isInside = false;
        for (const std::shared_ptr<Observation>& each : m_removedButRunning) {
            if (each->observer != observer) continue;
            for (const std::thread::id thread : each->threads) {
                if (thread == std::this_thread::get_id()) return false;
                isInside = true;
            }
        }
        return isInside;
    }

    std::mutex m_mutex;                        // guards all members below
    std::condition_variable m_handlerReturned; // signalled when a removed observation's handler returns
    std::unordered_map<NSString*, Observations, NameHash, NameEqual> m_byName; // owns its keys
    std::unordered_multimap<id, Observations::iterator> m_byObserver;
    std::vector<std::shared_ptr<Observation>> m_removedButRunning; // removed, but still inside their handlers
};

/// The observations of the default center, kept for the life of the process.
ObservationTable& observations() {
    static ObservationTable& table = *new ObservationTable;
    return table;
}

} // namespace

// Has no instance variables, because it becomes the class of an existing object. Observers that GNUstep
// itself registered earlier stay with the superclass, which also posts; there this class observes every
// notification.
@interface OZMNotificationCenter : NSNotificationCenter
@end

@implementation OZMNotificationCenter

// Runs while there is only one thread. Otherwise GNUstep would create the center when the first thread
// registers, and a second thread that registers at the same time would use it without synchronisation.
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
