#include "system/KvDynamicLibrary.h"

#include <gtest/gtest.h>

namespace {

TEST(KvDynamicLibraryTest, AModuleIsThereFromInitializeToRelease)
{
    CKvDynamicLibrary library(KV_MODULE_PATH);
    EXPECT_EQ(library.GetFunctionAddress("KvCountCalls"), nullptr);
    for (int load = 0; load < 2; ++load) {
        ASSERT_TRUE(library.Initialize() && library.Initialize());
        const auto count = reinterpret_cast<int (*)()>(library.GetFunctionAddress("KvCountCalls"));
        ASSERT_NE(count, nullptr);
        EXPECT_EQ(count(), 1);
        library.Release();
        library.Release();
        EXPECT_EQ(library.GetFunctionAddress("KvCountCalls"), nullptr);
    }
    for (const char* noModule : {"", "/", "/absent.so", KV_NO_MODULE_PATH})
        EXPECT_FALSE(CKvDynamicLibrary(noModule).Initialize()) << noModule;
}

}  // namespace
