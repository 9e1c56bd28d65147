// The HTTP library is not built with the thread sanitizer, which therefore takes the statics that
// it guards for races.
extern "C" const char* __tsan_default_suppressions();   // NOLINT(bugprone-reserved-identifier)
extern "C" const char* __tsan_default_suppressions() {  // NOLINT(bugprone-reserved-identifier)
  return "race:libcpp-httplib.so\n";
}
