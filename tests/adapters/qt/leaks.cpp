// What other libraries keep until the process ends is not a leak of ours.
extern "C" const char* __lsan_default_suppressions();  // NOLINT: the name is the sanitizer's

extern "C" const char* __lsan_default_suppressions() {  // NOLINT
  return "leak:libfontconfig\n"                         // its configuration and caches
         "leak:libdbus-1\n";                            // the settings of the session bus
}
