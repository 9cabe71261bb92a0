# What every foreign machine has in common. Tests are found when they run, not while building: the
# emulators are slow. Headers of this machine are looked for, but none of its libraries.
set(CMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE PRE_TEST)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
