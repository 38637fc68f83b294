// Names of the failures, for messages and for lines between processes.
#pragma once

#include "platform/file.h"

#include <gtest/gtest.h>
#include <ostream>
#include <string>

namespace TARVO::platform {

inline std::string nameOf(FileError error) {
    switch (error) {
    case FileError::none:
        return "none";
    case FileError::notFound:
        return "notFound";
    case FileError::pathNotFound:
        return "pathNotFound";
    case FileError::accessDenied:
        return "accessDenied";
    case FileError::sharingViolation:
        return "sharingViolation";
    case FileError::exists:
        return "exists";
    case FileError::other:
        return "other";
    }
    return "?";
}

inline void PrintTo(FileError error, std::ostream* out) {
    *out << nameOf(error);
}

// There is a file exactly if there is no error.
inline FileError errorOf(const OpenedFile& opened) {
    EXPECT_EQ(static_cast<bool>(opened.file), opened.error == FileError::none);
    return opened.error;
}

} // namespace TARVO::platform
