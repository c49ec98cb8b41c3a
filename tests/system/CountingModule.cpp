// A module that knows how often it was called since it was loaded.

extern "C" int KvCountCalls()
{
    static int calls = 0;
    return ++calls;
}
