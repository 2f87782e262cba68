#pragma once

#include <QByteArray>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace veloran::test {

/// CRC-32 of RFC 1952, bit by bit.
inline std::uint32_t crc32(std::string_view bytes) {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t i = 0; i < table.size(); ++i) {
        table[i] = i;
        for (int bit = 0; bit < 8; ++bit) {
            table[i] = table[i] & 1U ? 0xEDB88320U ^ (table[i] >> 1U) : table[i] >> 1U;
        }
    }
    std::uint32_t crc = ~0U;
    for (const char byte : bytes) {
        crc = table[(crc ^ static_cast<unsigned char>(byte)) & 0xFFU] ^ (crc >> 8U);
    }
    return ~crc;
}

inline std::string littleEndian(std::uint32_t value) {
    std::string bytes;
    for (unsigned shift = 0; shift < 32; shift += 8) {
        bytes += static_cast<char>((value >> shift) & 0xFFU);
    }
    return bytes;
}

/// One member of a gzip file.
inline std::string gzip(std::string_view plain) {
    const QByteArray zlib =
        qCompress(QByteArray::fromRawData(plain.data(), static_cast<qsizetype>(plain.size())));
    // Qt's length (4 bytes) and zlib's head (2) in front, zlib's checksum (4) behind.
    const auto deflated =
        plain.empty() ? std::string("\x03\0", 2) : zlib.mid(6).chopped(4).toStdString();
    const std::string head("\x1f\x8b\x08\0\0\0\0\0\0\xff", 10);
    return head + deflated + littleEndian(crc32(plain)) +
           littleEndian(static_cast<std::uint32_t>(plain.size()));
}

}  // namespace veloran::test
