// Edits line-oriented text files (INI-style profiles, batch files) that somebody else wrote: reads one into a
// list of lines, finds, reads, inserts, changes and deletes lines by numbered operations, and writes the list
// back. The login script is edited with it.
//
// Lines that no operation touches keep every byte but their ending. Except: what follows 0x1A, a zero or a
// lone carriage return in a line is lost; blank lines at the end of the file go; a line that does not end
// within 599 bytes is split, and below one of 598 or 599 characters each save leaves an empty line more.
//
// The calls come in this order: ProfileOpen, any number of ProfileExecute, ProfileSave, ProfileClose. Plain
// records, functions and status codes; all texts are 8-bit, and letter case means the case of the ASCII
// letters.
#pragma once

#include <cstddef>
#include <cstdint>

// Size in bytes of a buffer that holds any line or value with its terminating zero.
inline constexpr std::size_t profileTextSize = 600;
// Size in bytes of the file name that an open file keeps, with its terminating zero.
inline constexpr std::size_t profilePathSize = 608;

// What a call returns besides Win32 error codes of the file calls, which are cut to 16 bits.
enum ProfileStatus : std::int16_t
{
    PROF_OK = 0,
    PROF_NO_MEMORY = 8,                                        // an allocation failed
    PROF_TOO_LONG = static_cast<std::int16_t>(0xF000),         // a line or value would reach 600 characters
    PROF_NO_CURRENT = static_cast<std::int16_t>(0xF003),       // the cursor is on no line
    PROF_EMPTY = static_cast<std::int16_t>(0xF004),            // the file has no lines
    PROF_NOT_OPEN = static_cast<std::int16_t>(0xF005),         // the request has no open file
    PROF_KEY_NOT_FOUND = static_cast<std::int16_t>(0xF100),    // no entry with the key
    PROF_SECTION_NOT_FOUND = static_cast<std::int16_t>(0xF101) // no header with the section name
};

// What ProfileExecute can do. "Find" and "get" copy the value into the request's buffer.
enum ProfileOperation : std::uint16_t
{
    PROF_LIST_PREPEND = 1,        // put the value in front of a ";"-list, unless the list contains it
    PROF_LIST_APPEND = 2,         // the same, at the end of the list
    PROF_FIND_FIRST = 3,          // first entry with the key
    PROF_FIND_NEXT = 4,           // next entry with the key, from the line below the cursor on
    PROF_DELETE_PAIR = 5,         // delete the first entry with both key and value; returns 0 without one too
    PROF_REPLACE_CURRENT = 6,     // put a new line in the place of the cursor line
    PROF_REMOVE_FROM_VALUE = 7,   // cut the first occurrence of the value out of the entry's value
    PROF_SET = 8,                 // rewrite the entry, or append a new one
    PROF_SECTION_SET = 10,        // the same within a section, which is appended when missing
    PROF_SECTION_ADD = 11,        // add an entry to the section without looking for its key
    PROF_SECTION_GET = 13,        // entry with the key in the section
    PROF_SECTION_GET_NEXT = 14,   // the next one, from the line below the cursor to the end of its section
    PROF_SECTION_DELETE = 15,     // delete the section's header and lines
    PROF_SECTION_DELETE_KEY = 16, // delete the entry in the section; returns 0 without one too
    PROF_SECTION_COPY = 17,       // copy the section's lines, without its header, to the clipboard
    PROF_SECTION_APPEND_VALUE = 18, // add ", " and the value to the entry in the section
    PROF_INSERT_FIRST = 20,         // new line at the top of the file
    PROF_APPEND_LAST = 21,          // new line at the end of the file; in sectioned mode below a new header
    PROF_PASTE_AT_END = 23,     // append an empty line and the clipboard's lines; nothing without a clipboard
    PROF_INSERT_AFTER = 40,     // new line below the cursor line
    PROF_INSERT_BEFORE = 41,    // new line above the cursor line
    PROF_INSERT_RAW_AFTER = 42, // key and value, put together without a format, below the cursor line
    PROF_DELETE_CURRENT = 50,   // delete the cursor line; the cursor moves to the next one
    PROF_SET_RAW_CURRENT = 51,  // rewrite the cursor line as key and value, put together without a format
    PROF_DELETE_FIRST = 52,     // delete the first entry with the key; returns 0 without one too
    PROF_ADD_SECTION_AT_END = 60, // in sectioned mode, append an empty line and a header; else nothing
    PROF_FIND_SECTION = 61        // put the cursor on the section's header
};

// How entries are read and written. Without a mode flag the file is in raw mode: its lines are plain text,
// and the key of a line is the whole line. Compact wins over sectioned.
enum ProfileFlag : std::uint8_t
{
    PROF_SECTIONED =
        0x01, // entries are written "  key = value"; appended ones get a section header of their own
    PROF_COMPACT = 0x04, // entries are written "key=value"
    PROF_CREATE = 0x80   // open creates the file, or empties the one that is there
};

// What a line is, by its first character after blanks; found out when the line is made. Rewriting a line
// keeps its kind.
enum ProfileKind : std::uint32_t
{
    PROF_KIND_COMMENT = 1, // ";"
    PROF_KIND_SECTION = 2, // "["
    PROF_KIND_ENTRY = 4,   // anything else
    PROF_KIND_BLANK = 17   // nothing; a comment too, so that whatever skips comments skips blank lines
};

// One line of the file. Line and text are allocated with malloc; the list owns both.
struct ProfileLine
{
    char* text; // without its line ending, at most 599 characters
    ProfileLine* next;
    ProfileLine* prev;
    std::uint32_t kind; // one of ProfileKind
};

// One open file.
struct ProfileFile
{
    char path[profilePathSize];
    ProfileLine* head; // an empty line before the first one, never written
};

// What the caller asks for. Zeroed before ProfileOpen, which sets `file`, `format` and, outside sectioned
// mode, `section` (to null); the flags are set before it, the other fields before each operation. A null text
// counts as empty.
struct ProfileRequest
{
    ProfileFile* file; // null while no file is open
    const char* section;
    const char* key;
    char* value;        // to write, or a buffer of profileTextSize bytes that is read into (null: not wanted)
    const char* format; // printf format that makes a line of key and value; the caller may replace it
    ProfileLine* current; // the cursor, on the line that the last operation found, wrote or passed; or null
    std::uint16_t operation; // one of ProfileOperation
    std::uint8_t flags;      // of ProfileFlag
    ProfileLine* clipboard; // an empty line and what PROF_SECTION_COPY copied, or null; ProfileClose frees it
};

// Reads the file, which is created when it is missing, and shares it with readers meanwhile. Lines end with
// CR LF, LF or LF CR. Returns 0, 8, 206 for a path of 608 characters or more, or a Win32 error code; on
// failure no file is open.
[[nodiscard]] std::int16_t ProfileOpen(const char* path, ProfileRequest& request);

// Performs the request's operation. A code that is not in ProfileOperation does nothing and returns 0. A line
// or value of 600 characters or more is refused: nothing is written or inserted.
[[nodiscard]] std::int16_t ProfileExecute(ProfileRequest& request);

// Writes the lines back, each followed by CR LF, to a file that still exists; waits up to a second for one
// that another program has open. A read-only file stays read-only. A file that ends up empty is deleted,
// which is a success, and so is one that could not be written: then the status says why. Without memory for
// the text the file is left alone. The lines in memory stay as they are. A process that ends meanwhile leaves
// the old lines, or the new ones with empty lines below.
[[nodiscard]] std::int16_t ProfileSave(ProfileRequest& request);

// Frees the lines, the clipboard and the file, and clears them in the request. Does nothing when no file is
// open.
void ProfileClose(ProfileRequest& request);
