// Stands in for libdeflate's file of the same name, whose table of 8 KB cannot be compressed: half a byte at a time. The
// pictures that a page asks for are small.
#include "libdeflate.h"

uint32_t libdeflate_crc32(uint32_t crc, const void* buffer, size_t size) {
    static const uint32_t table[16] = {
        0x00000000, 0x1DB71064, 0x3B6E20C8, 0x26D930AC, 0x76DC4190, 0x6B6B51F4, 0x4DB26158, 0x5005713C,
        0xEDB88320, 0xF00F9344, 0xD6D6A3E8, 0xCB61B38C, 0x9B64C2B0, 0x86D3D2D4, 0xA00AE278, 0xBDBDF21C,
    };
    if (!buffer) return 0;
    crc = ~crc;
    for (const uint8_t *byte = buffer, *const end = byte + size; byte < end; ++byte) {
        crc = crc >> 4 ^ table[(crc ^ *byte) & 15];
        crc = crc >> 4 ^ table[(crc ^ *byte >> 4) & 15];
    }
    return ~crc;
}
