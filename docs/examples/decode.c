#include "RTCM2.h"

#include <stdio.h>

/* A type 1 message of station 5 with one correction. */
static const uint8_t packed[] = {0x66, 0x04, 0x05, 0x8C, 0xA3, 0x10,
                                 0x2C, 0xFF, 0x9C, 0x05, 0x2A, 0x00};

int main(void)
{
    RTCM2_message_s message;
    int32_t bits = RTCM2_decode(NULL, packed, sizeof packed, &message);
    if (bits < 0) {
        printf("%s\n", RTCM2_error_to_string(bits));
        return 1;
    }
    if (message.kind == RTCM2_MESSAGE_TYPE_1) {
        for (int i = 0; i < message.Message_Type_1.Ns; ++i) {
            const RTCM2_DGNSS_s* correction = &message.Message_Type_1.Corrections[i];
            printf("satellite %d: PRC %d\n", correction->Satellite_Id, correction->PRC);
        }
        RTCM2_free_Message_Type_1_children(&message.Message_Type_1);
    }
    return 0;
}
