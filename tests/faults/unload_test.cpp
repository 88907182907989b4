#include <gtest/gtest.h>

#include <barrier>
#include <dlfcn.h>
#include <thread>

// A thread frees the memory it has kept when it ends. By then, the module with that code may have been
// unloaded.
TEST(Unloading, DoesNotHarmThreadsThatHaveDrawn) {
    void* const module = dlopen(OZMIRA_UNLOADED_MODULE, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(module, nullptr) << dlerror();
    const auto parseAndDraw = reinterpret_cast<bool (*)(const char*)>(dlsym(module, "ParseAndDraw"));
    ASSERT_NE(parseAndDraw, nullptr) << dlerror();
    std::barrier step(2);
    std::thread thread([&] {
        EXPECT_TRUE(parseAndDraw(
            "<svg width='9' height='9'><path d='M1 1h5v5l1 1c1 2 3 4 5 6z' stroke='red'/></svg>"));
        step.arrive_and_wait();
        step.arrive_and_wait();
    });
    step.arrive_and_wait();
    dlclose(module);
    EXPECT_EQ(dlopen(OZMIRA_UNLOADED_MODULE, RTLD_NOW | RTLD_NOLOAD), nullptr)
        << "the module is still loaded";
    step.arrive_and_wait();
    thread.join();
}
