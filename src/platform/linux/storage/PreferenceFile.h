// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/PropertyValue.h"

#include <cstdint>
#include <string>

namespace stowpocket {

/// The file behind the preferences. A file that is no property list is set aside and begun anew; one that cannot be
/// read is left alone, and nothing is written over it for as long as it is there. Whatever goes wrong is logged once.
/// Read once, then written by one thread at a time.
class PreferenceFile {
public:
    explicit PreferenceFile(std::string path) : path_(std::move(path)) {}

    /// What the file holds; empty when there is none, or none that can be used.
    [[nodiscard]] PropertyValue::Dictionary read();

    /// Brings `values` to the disk, unless this or a later generation of them is there already.
    void write(const PropertyValue::Dictionary& values, std::uint64_t generation);

private:
    void setAside();
    void warnOnce(const std::string& what);
    [[nodiscard]] bool mustNotBeTouched() const;

    const std::string path_;
    bool isUnreadable_ = false;
    bool hasWarned_ = false;
    std::uint64_t writtenGeneration_ = 0;
};

}  // namespace stowpocket
