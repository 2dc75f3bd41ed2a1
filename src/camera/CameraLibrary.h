#pragma once

#include <cstdint>

namespace orvo::cognex {

/// What the camera libraries have in common, one row a library: the words before the number of a failure, and
/// the functions that are alike in all but their names. Handles are numbers, 0 stands for none; each function
/// answers 0 or the number of its failure, and writes its out word on success only.
struct CameraLibrary {
    const char* errorPrefix;

    int32_t (*closeBoard)(uint64_t library);

    int32_t (*setInteger)(uint64_t camera, const char* name, int64_t value);
    int32_t (*getInteger)(uint64_t camera, const char* name, int64_t* value);
    int32_t (*setBoolean)(uint64_t camera, const char* name, int32_t value);
    int32_t (*getBoolean)(uint64_t camera, const char* name, int32_t* value);
    int32_t (*setFloat)(uint64_t camera, const char* name, double value);
    int32_t (*getFloat)(uint64_t camera, const char* name, double* value);
    /// The text that a getter leads to is the library's, until the next call with that camera.
    int32_t (*setString)(uint64_t camera, const char* name, const char* text);
    int32_t (*getString)(uint64_t camera, const char* name, char** text);
    int32_t (*setEnumeration)(uint64_t camera, const char* name, const char* text);
    int32_t (*getEnumeration)(uint64_t camera, const char* name, char** text);
    int32_t (*executeCommand)(uint64_t camera, const char* name);

    /// Throws AIKException with the prefix and the number in decimal for any `status` but 0.
    void check(int32_t status) const;
};

}   // namespace orvo::cognex
