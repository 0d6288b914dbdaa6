// Another library in the host agent's place.
extern "C" __declspec(dllexport) int AnotherEntry();

int AnotherEntry()
{
    return 0;
}
