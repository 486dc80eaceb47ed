#pragma once

#include <QImage>
#include <QString>

// Reads a photo the person picked from a file. A large picture is decoded straight to a
// smaller size, so that the full-size bitmap is never held in memory.
class ProfilePhotoReader {
public:
    // Pictures wider or taller than this are reduced while decoding (twice the stored width
    // leaves room for a sharp preview).
    static constexpr int kMaximumSide = 1200;
    // The stored photo is 600 wide: a picture taller than this many times its width would
    // become a bitmap of many megapixels, so it is refused.
    static constexpr int kMaximumTallness = 10;

    struct Result {
        QImage image;  // null on failure
        QString error; // why the file could not be used; empty on success
    };

    [[nodiscard]] static Result read(const QString &path);
};
