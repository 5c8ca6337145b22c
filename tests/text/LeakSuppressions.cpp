// fontconfig keeps blocks from parsing its configuration files for the life
// of the process; nothing of ours is involved, so the leak checker is told to
// look past them. Used only in sanitizer builds.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig.so\n";
}
