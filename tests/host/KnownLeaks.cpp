// What the leak check of native builds is not to report.

extern "C" const char* __lsan_default_suppressions();

// A refused read leaves its data behind on purpose; see there.
const char* __lsan_default_suppressions()
{
    return "leak:CRegistryKey::QueryValue\n";
}
