// A library built on the class library: its start, its end, and that it can be unloaded.
#include <gtest/gtest.h>
#include <thread>
#include <windows.h>

namespace {

constexpr const char* SampleName = "mfc_sample.dll";

struct LibraryTest : testing::Test
{
    void SetUp() override
    {
        SetEnvironmentVariableA("SAMPLE_REFUSES", nullptr);
        SetEnvironmentVariableA("SAMPLE_ENDED", nullptr);
    }
    void TearDown() override { SetEnvironmentVariableA("SAMPLE_REFUSES", nullptr); }

    template <typename Result>
    Result Call(HMODULE library, const char* name)
    {
        const auto function =
            reinterpret_cast<Result (*)()>(reinterpret_cast<void (*)()>(GetProcAddress(library, name)));
        return function();
    }
};

TEST_F(LibraryTest, StartsItsApplicationWithItsOwnHandle)
{
    const HMODULE library = LoadLibraryA(SampleName);
    ASSERT_NE(library, nullptr);

    EXPECT_EQ(Call<int>(library, "Started"), 1);
    EXPECT_EQ(Call<HINSTANCE>(library, "ResourceModule"), library);
    FreeLibrary(library);
}

TEST_F(LibraryTest, IsUnloadedAfterItsWindowsWereUsed)
{
    const HMODULE library = LoadLibraryA(SampleName);
    EXPECT_EQ(Call<int>(library, "UseWindows"), 1);
    std::thread([&] { EXPECT_EQ(Call<int>(library, "UseWindows"), 1); }).join();
    FreeLibrary(library);

    EXPECT_EQ(GetModuleHandleA(SampleName), nullptr);
    EXPECT_GT(GetEnvironmentVariableA("SAMPLE_ENDED", nullptr, 0), 0U);
}

TEST_F(LibraryTest, IsNotLoadedWhenItsApplicationRefuses)
{
    SetEnvironmentVariableA("SAMPLE_REFUSES", "yes");

    EXPECT_EQ(LoadLibraryA(SampleName), nullptr);
}

TEST_F(LibraryTest, IsNotLoadedWithoutAnApplication)
{
    const HMODULE library = LoadLibraryA("mfc_sample_without_application.dll");
    const DWORD error = GetLastError();

    EXPECT_EQ(library, nullptr);
    EXPECT_EQ(error, DWORD{ERROR_DLL_INIT_FAILED});
}

} // namespace
