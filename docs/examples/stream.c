/* Writes two messages as a stream with a line of text between them, and finds them again. */
#include "RTCM2_framing.h"

#include <stdio.h>
#include <string.h>

int main(void)
{
    /* Type 1, station 5, one satellite. */
    static const uint8_t packed[] = {0x66, 0x04, 0x05, 0x8C, 0xA3, 0x10,
                                     0x2C, 0xFF, 0x9C, 0x05, 0x2A, 0x00};
    static const char text[] = "$GPGSA,A,3,10,07,05*0A\r\n";
    uint8_t stream[100];
    uint32_t last_bits = 0;
    size_t size = RTCM2_write_message(packed, sizeof packed, &last_bits, stream, sizeof stream);
    memcpy(stream + size, text, sizeof text - 1);
    size += sizeof text - 1;
    size +=
        RTCM2_write_message(packed, sizeof packed, &last_bits, stream + size, sizeof stream - size);

    RTCM2_framer_s* framer = RTCM2_framer_new();
    if (framer == NULL) {
        return 1;
    }
    RTCM2_framer_push(framer, stream, size);
    RTCM2_framer_finish(framer);
    RTCM2_frame_s frame;
    RTCM2_framing_header_s header;
    while (RTCM2_framer_next(framer, &frame)) {
        if (frame.verdict == RTCM2_VERDICT_ACCEPTED &&
            RTCM2_read_header(frame.packed, frame.size, &header)) {
            printf("byte %lu: type %lu of station %lu, %lu words\n", (unsigned long)frame.begin,
                   (unsigned long)header.type, (unsigned long)header.station,
                   (unsigned long)RTCM2_framer_words(framer));
        } else {
            printf("byte %lu: %s\n", (unsigned long)frame.begin, RTCM2_verdict_text(frame.verdict));
        }
    }
    RTCM2_framer_free(framer);
    return 0;
}
