// SPDX-License-Identifier: MIT
#pragma once

#include "services/OtherPrograms.h"

#include <map>

namespace stowpocket {

/// A desktop's settings behind the program that reads and writes them, each key with its value as it is written.
class FakeDesktopSettings : public ChildProcess {
public:
    [[nodiscard]] std::optional<Bytes> run(const std::string& executable,
                                           const std::vector<std::string>& arguments) override {
        if (executable != "gsettings")
            return std::nullopt;
        if (arguments.at(0) == "reset-recursively") {
            std::erase_if(values, [&](const auto& entry) { return entry.first.starts_with(arguments.at(1) + ' '); });
            return Bytes{};
        }
        const std::string key = arguments.at(1) + ' ' + arguments.at(2);
        if (arguments.at(0) == "set" && !isReadOnly)
            values[key] = arguments.at(3);
        const std::string output = arguments.at(0) == "get" && values.contains(key) ? values.at(key) + '\n' : "";
        return Bytes(output.begin(), output.end());
    }

    std::map<std::string, std::string> values;
    bool isReadOnly = false;
};

}  // namespace stowpocket
