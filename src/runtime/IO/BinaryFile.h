// Binary files as programs use them: up to 32 open at once, by handles 1 to
// 32, read and written a byte at a time. Names follow the file name rule.
#pragma once

#include <string>

enum class BinaryMode { Read = 0, Write = 1, Both = 2 };

// A handle for `name` in `mode`, or -1 with a debug line when it can't be
// opened; writing makes the file's missing folders and starts it empty, both
// keeps what is there. Fatal when 32 files are open already.
int file_bin_open(const std::string& name, int mode);
// Closes the file; fatal for a handle that isn't open.
void file_bin_close(int handle);
// The next byte, 0 to 255, or -1 at the end.
int file_bin_read_byte(int handle);
// Writes the low 8 bits of `byte` where the file stands.
void file_bin_write_byte(int handle, int byte);
// The file's size, where it stands, and a move to `position`.
long file_bin_size(int handle);
long file_bin_position(int handle);
void file_bin_seek(int handle, long position);
// Empties a file opened for writing and starts again at its beginning.
void file_bin_rewrite(int handle);

// file_bin_* as built-ins.
void register_binary_file_builtins();
