# The client of the helper program, with fakes for the helper. Included from this folder.
zovkpopup_tests(zovkpopup_webhost_client_tests
  SOURCES
    webhost/BackdropTest.cpp
    webhost/CommandsTest.cpp
    webhost/EventsTest.cpp
    webhost/PageProcessTest.cpp
    webhost/ProcessTest.cpp
    webhost/RecoveryTest.cpp
    webhost/SilenceTest.cpp
    webhost/WatchdogTest.cpp
    webhost/WindowTest.cpp
  LINK zovkpopup_platform_linux fmt::fmt Boost::json
  LABEL contract)
