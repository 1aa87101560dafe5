// Binary buffers: blocks of bytes with a read and write position, owned by
// the runtime and named by small numbers.
//
// They carry WAV data on its way to a sound, microphone samples from the
// audio layer, and blocks whose address external libraries read or fill.
// Sounds borrow a buffer's memory and count as its users, so a buffer that
// is deleted while borrowed keeps its bytes until the last user lets go.
//
// The table of ids is shared with worker threads and guarded by its mutex;
// the bytes of one buffer are touched by one thread at a time. Wrong ids and
// reads past the end go through ReportError; failed writes only return a
// negative result. The classes behind the ids are in IBuffer.h.
#pragma once

#include <cstdint>

#include "runtime/Code/RValue.h"

class IBuffer;

// Buffer types.
inline constexpr int32_t buffer_fixed = 0;
inline constexpr int32_t buffer_grow = 1;
inline constexpr int32_t buffer_wrap = 2;
inline constexpr int32_t buffer_fast = 3;

// Data types of reads and writes.
inline constexpr int32_t buffer_u8 = 1;
inline constexpr int32_t buffer_s8 = 2;
inline constexpr int32_t buffer_u16 = 3;
inline constexpr int32_t buffer_s16 = 4;
inline constexpr int32_t buffer_u32 = 5;
inline constexpr int32_t buffer_s32 = 6;
inline constexpr int32_t buffer_f16 = 7;
inline constexpr int32_t buffer_f32 = 8;
inline constexpr int32_t buffer_f64 = 9;
inline constexpr int32_t buffer_bool = 10;
inline constexpr int32_t buffer_string = 11;
inline constexpr int32_t buffer_u64 = 12;
inline constexpr int32_t buffer_text = 13;

// Bases of buffer_seek.
inline constexpr int32_t buffer_seek_start = 0;
inline constexpr int32_t buffer_seek_relative = 1;
inline constexpr int32_t buffer_seek_end = 2;

// A new buffer of `size` zero bytes; alignment 1 to 1024 is rounded up to a power of two. Its id, or -1.
int32_t buffer_create(int32_t size, int32_t type, int32_t alignment);
// Whether `id` names a buffer, as a bool value.
RValue buffer_exists(int32_t id);
// Frees a buffer and its id; bytes still borrowed by sounds live until the last user lets go.
void buffer_delete(int32_t id);
// Moves the position from the start, by the offset, or back from the end; returns the new position.
int32_t buffer_seek(int32_t id, int32_t base, int32_t offset);
// The read and write position.
int32_t buffer_tell(int32_t id);
// The number of usable bytes.
int32_t buffer_get_size(int32_t id);
// The highest offset written so far, at most the size.
int32_t buffer_get_used_size(int32_t id);
// The first byte of the data, as a pointer value.
RValue buffer_get_address(int32_t id);
// A new block of `new_size` bytes keeping the old bytes that fit; the rest is zero.
void buffer_resize(int32_t id, int32_t new_size);
// Raises the used size to `size` (at most the buffer's size); a lower value changes nothing.
void buffer_set_used_size(int32_t id, int32_t size);
// Reads one value of `data_type` at the position and moves past it; 0 with a report past the end.
RValue buffer_read(int32_t id, int32_t data_type);
// Writes one value at the position and moves past it: 0, -1 for an unknown type, -2 with no room, -4 for a
// type a fast buffer can't take.
int32_t buffer_write(int32_t id, int32_t data_type, const RValue& value);
// Copies up to `size` bytes of what the source has written from `offset` into the destination at
// `destination_offset`, which wraps, grows or clips by its type. Positions don't move.
void buffer_copy(int32_t source, int32_t offset, int32_t size, int32_t destination, int32_t destination_offset);
// Writes `value` as `data_type` again and again over `size` bytes from `offset`; the position doesn't move.
void buffer_fill(int32_t id, int32_t offset, int32_t data_type, const RValue& value, int32_t size);

// Counts one more sound that borrows the buffer's memory; false for an id that isn't a buffer.
bool buffer_add_user(int32_t id);
// Counts one borrower less; a deleted buffer is freed when its last user lets go.
void buffer_remove_user(int32_t id);
// The buffer behind an id, for other runtime modules (its data, size and type), or null.
IBuffer* buffer_lookup(int32_t id);
