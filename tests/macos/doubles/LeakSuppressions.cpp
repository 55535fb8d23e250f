// GCC's Objective-C runtime never frees the tables of its classes. It is named by its file, since
// the name of a function in it is unknown where no symbolizer is installed; the doubles count the
// objects that it allocates themselves.
extern "C" const char *__lsan_default_suppressions(); // NOLINT(bugprone-reserved-identifier): fixed

extern "C" const char *__lsan_default_suppressions() {
    return "leak:libobjc.so\n";
}
