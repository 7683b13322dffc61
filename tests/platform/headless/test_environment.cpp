// The C library forgets to free what it makes of LOCPATH, which only these tests set. The leak
// sanitizer asks a program for this when it is built in; otherwise nobody calls it.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() { return "leak:__argz_add_sep\n"; }
