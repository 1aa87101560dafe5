// Text files as programs use them: up to 31 open at once, by handles 1 to
// 31. A file opened for reading is read whole; one opened for writing is
// kept in memory and written whole, through the whole-file routine, when it
// is closed. Line ends are written as CR LF.
#pragma once

#include <string>
#include <string_view>

// File names follow the file name rule: read where the rule finds them,
// written into the save area.
//
// A handle for reading `name`, or -1 with a debug line when it can't be
// read. Fatal when 31 files are open already.
int file_text_open_read(const std::string& name);
// A handle for writing `name` anew (its missing folders are made), or -1.
int file_text_open_write(const std::string& name);
// As for writing, keeping what the file holds.
int file_text_open_append(const std::string& name);
// Writes a file opened for writing and frees the handle.
void file_text_close(int handle);
// The text up to the next line end, which stays unread.
std::string file_text_read_string(int handle);
// The text through the next line end, line end included.
std::string file_text_readln(int handle);
// Whether all of the file has been read.
bool file_text_eof(int handle);
// Writes `text`, each LF without a CR before it as CR LF.
void file_text_write_string(int handle, std::string_view text);
// Writes a line end, CR LF.
void file_text_writeln(int handle);

// file_text_* as built-ins.
void register_text_file_builtins();
