#pragma once

#include <gtest/gtest.h>

#include <string>

namespace veloran::test {

/// One of the many cases that a test runs in a loop. Failures name it. Its name goes to standard
/// error before it runs, too, so that it stands above whatever ends the program: a contract, a
/// signal, a sanitizer, the time limit of the test. A case that lasts longer than `seconds` ends
/// the program.
class RunningCase {
  public:
    RunningCase(const std::string& name, unsigned seconds);
    ~RunningCase();
    RunningCase(const RunningCase&) = delete;
    RunningCase& operator=(const RunningCase&) = delete;

  private:
    ::testing::ScopedTrace trace_;
};

}  // namespace veloran::test
