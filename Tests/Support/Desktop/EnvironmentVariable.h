#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace quorvel {

/// Sets a variable of the environment and puts back what was there at the end of the block. While no other thread runs.
class EnvironmentVariable {
public:
    EnvironmentVariable(std::string name, const std::optional<std::string>& value) : name_(std::move(name)) {
        if (const char* old = std::getenv(name_.c_str())) old_ = old;
        set(value);
    }
    ~EnvironmentVariable() { set(old_); }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

private:
    void set(const std::optional<std::string>& value) {
        if (value)
            ::setenv(name_.c_str(), value->c_str(), 1);
        else
            ::unsetenv(name_.c_str());
    }

    std::string name_;
    std::optional<std::string> old_;
};

}  // namespace quorvel
