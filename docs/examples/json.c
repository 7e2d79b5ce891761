/* Prints packed messages as JSON, one object a line, and knows none of them: the table tells what
 * there is.
 *
 *     json 6604058CA3102CFF9C052A00      hexadecimal digits as arguments
 *     json < messages.hex                or as lines
 *
 * A value that is coded or has a unit becomes {"value": 1, "text": "...", "unit": "..."}. What is
 * wrong goes to standard error, the rest is still printed, and the exit status is 1.
 */
#include "RTCM2_format.h"

#include <ctype.h>
#include <inttypes.h>
#include <stdio.h>
#include <string.h>

enum { UNKNOWN = 64 }; /* no number of a type */

/* One byte of UTF-8. */
static void put_byte(unsigned char byte)
{
    static const char special[] = "\"\\\b\f\n\r\t";
    const char* found = byte ? strchr(special, byte) : NULL;
    if (found) {
        printf("\\%c", "\"\\bfnrt"[found - special]);
    } else if (byte < 0x20) {
        printf("\\u%04x", byte);
    } else {
        putchar(byte);
    }
}

static void put_string(const char* text)
{
    putchar('"');
    for (; *text; ++text) {
        put_byte((unsigned char)*text);
    }
    putchar('"');
}

/* A run of characters, which are Latin-1. */
static void put_characters(const void* record, const RTCM2_member_s* member)
{
    putchar('"');
    for (uint32_t i = 0; i < RTCM2_count(record, member); ++i) {
        int64_t value = 0;
        RTCM2_read_integer(record, member, i, &value);
        unsigned character = (unsigned)value & 0xFFU;
        if (character >= 0x80) {
            put_byte((unsigned char)(0xC0U | character >> 6));
            character = 0x80U | (character & 0x3FU);
        }
        put_byte((unsigned char)character);
    }
    putchar('"');
}

static void put_number(const void* record, const RTCM2_member_s* member, uint32_t index)
{
    char real[RTCM2_TEXT_ROOM] = "";
    int64_t value = 0;
    if (member->type == RTCM2_TYPE_REAL) {
        RTCM2_read_text(record, member, index, real, sizeof real);
        fputs(real, stdout);
        return;
    }
    RTCM2_read_integer(record, member, index, &value);
    if (member->type == RTCM2_TYPE_SIGNED) {
        printf("%" PRId64, value);
    } else {
        printf("%" PRIu64, (uint64_t)value);
    }
}

static void put_value(const void* record, const RTCM2_member_s* member, uint32_t index)
{
    int64_t value = 0;
    const char* text = NULL;
    if (RTCM2_read_integer(record, member, index, &value) == RTCM2_ACCESS_DONE) {
        text = RTCM2_text_of(member, value);
    }
    int plain = !text && !*member->unit;
    fputs(plain ? "" : "{\"value\": ", stdout);
    put_number(record, member, index);
    if (text) {
        fputs(", \"text\": ", stdout);
        put_string(text);
    }
    if (*member->unit) {
        fputs(", \"unit\": ", stdout);
        put_string(member->unit);
    }
    fputs(plain ? "" : "}", stdout);
}

static void put_members(const void* record, const RTCM2_kind_s* kind, const char* separator);

static void put_list(const void* record, const RTCM2_member_s* member)
{
    putchar('[');
    for (uint32_t i = 0; i < RTCM2_count(record, member); ++i) {
        fputs(i ? ", " : "", stdout);
        if (member->role == RTCM2_ROLE_ARRAY) {
            putchar('{');
            put_members(RTCM2_element(record, member, i), member->elements, "");
            putchar('}');
        } else {
            put_value(record, member, i);
        }
    }
    putchar(']');
}

static void put_members(const void* record, const RTCM2_kind_s* kind, const char* separator)
{
    for (uint32_t i = 0; i < kind->member_count; ++i) {
        const RTCM2_member_s* member = &kind->members[i];
        if (!RTCM2_is_present(record, member)) {
            continue;
        }
        printf("%s\"%s\": ", separator, member->name);
        separator = ", ";
        if (member->role == RTCM2_ROLE_RUN && member->type == RTCM2_TYPE_CHARACTER) {
            put_characters(record, member);
        } else if (member->role == RTCM2_ROLE_RUN || member->role == RTCM2_ROLE_ARRAY) {
            put_list(record, member);
        } else {
            put_value(record, member, 0);
        }
    }
}

/* The bytes that the digits stand for, with blanks between them; -1 where they are damaged. */
static int read_bytes(const char* digits, uint8_t bytes[RTCM2_PACKED_ROOM])
{
    int count = 0;
    for (;; ++count) {
        while (isspace((unsigned char)*digits)) {
            ++digits;
        }
        if (!*digits) {
            return count;
        }
        if (count == RTCM2_PACKED_ROOM || !isxdigit((unsigned char)digits[0]) ||
            !isxdigit((unsigned char)digits[1])) {
            return -1;
        }
        unsigned byte;
        sscanf(digits, "%2x", &byte);
        bytes[count] = (uint8_t)byte;
        digits += 2;
    }
}

/* Prints the message and returns 0, or 1 after an error. */
static int put_message(const char* digits)
{
    uint8_t bytes[RTCM2_PACKED_ROOM];
    int size = read_bytes(digits, bytes);
    if (size < 0) {
        fprintf(stderr, "No hexadecimal digits of up to %d bytes: %s\n", RTCM2_PACKED_ROOM, digits);
        return 1;
    }
    RTCM2_context_s context;
    RTCM2_init_context(&context);
    context.unknown_type = UNKNOWN;
    RTCM2_message_s message = {RTCM2_MESSAGE_NULL};
    int32_t result = RTCM2_decode(&context, bytes, (uint16_t)size, &message);
    if (context.unknown_type != UNKNOWN) {
        fprintf(stderr, "Unknown type %d: %s\n", context.unknown_type, digits);
    } else if (result < 0) {
        fprintf(stderr, "%s: %s\n", RTCM2_error_to_string(result), digits);
    } else {
        const RTCM2_kind_s* kind = RTCM2_kind_of(&message);
        printf("{\"kind\": \"%s\"", kind->name);
        put_members(&message, kind, ", ");
        puts("}");
    }
    RTCM2_free_message(&message);
    return result < 0;
}

/* Reads a line, of which what is too long for any message is cut; 0 at the end. */
static int read_line(char* line, int room)
{
    int length = 0;
    int character;
    while ((character = getchar()) != EOF && character != '\n') {
        if (length < room - 1) {
            line[length++] = (char)character;
        }
    }
    line[length] = '\0';
    return length > 0 || character != EOF;
}

int main(int count, char** arguments)
{
    char line[4096];
    int failed = 0;
    for (int i = 1; i < count; ++i) {
        failed |= put_message(arguments[i]);
    }
    while (count < 2 && read_line(line, sizeof line)) {
        failed |= put_message(line);
    }
    return failed;
}
