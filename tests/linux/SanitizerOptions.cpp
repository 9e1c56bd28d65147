// The library of the test's web server is not built with the thread sanitizer, which therefore
// takes the statics that it guards for races. In other builds nobody asks for this text.
extern "C" const char* __tsan_default_suppressions();   // NOLINT(bugprone-reserved-identifier)
extern "C" const char* __tsan_default_suppressions() {  // NOLINT(bugprone-reserved-identifier)
  return "race:libcpp-httplib.so\n";
}
