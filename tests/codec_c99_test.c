/* A C program that builds, writes, reads and releases a message through the shared library. */
#include "RTCM2.h"

#include <stdio.h>
#include <string.h>

static int failures = 0;

#define EXPECT(condition)                                                                          \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            fprintf(stderr, "%s:%d: not true: %s\n", __FILE__, __LINE__, #condition);              \
            ++failures;                                                                            \
        }                                                                                          \
    } while (0)

static void encodeCorrection(uint8_t* bytes, uint16_t size)
{
    RTCM2_Message_Type_1_s record;
    RTCM2_DGNSS_s* correction;
    memset(&record, 0, sizeof record);
    EXPECT(RTCM2_init_Message_Type_1(&record) == 0);
    record.Reference_Station_Id = 5;
    record.Modified_Z_Count = 4500;
    record.Sequence_No_ = 3;
    record.No_Of_Data_Words = 2;
    correction = RTCM2_append_Message_Type_1_Corrections(&record);
    EXPECT(correction != NULL && correction->parent == &record);
    correction->Scale_Factor = 0;
    correction->UDRE = 1;
    correction->Satellite_Id = 12;
    correction->PRC = -100;
    correction->RRC = 5;
    correction->Time_Of_Day = 42;
    EXPECT(RTCM2_validate_Message_Type_1(&record) == 0);
    EXPECT(RTCM2_encode_Message_Type_1(bytes, size, &record) == 88);
    RTCM2_free_Message_Type_1_children(&record);
}

int main(void)
{
    static const uint8_t expected[12] = {0x66, 0x04, 0x05, 0x8C, 0xA3, 0x10,
                                         0x2C, 0xFF, 0x9C, 0x05, 0x2A, 0x00};
    uint8_t bytes[12] = {0};
    RTCM2_context_s context;
    RTCM2_message_s message;

    encodeCorrection(bytes, sizeof bytes);
    EXPECT(memcmp(bytes, expected, sizeof bytes) == 0);

    RTCM2_init_context(&context);
    EXPECT(RTCM2_decode(&context, bytes, sizeof bytes, &message) == 88);
    EXPECT(message.kind == RTCM2_MESSAGE_TYPE_1);
    EXPECT(message.header.Modified_Z_Count == 4500);
    EXPECT(message.Message_Type_1.Ns == 1);
    EXPECT(message.Message_Type_1.Corrections[0].PRC == -100);
    RTCM2_free_Message_Type_1_children(&message.Message_Type_1);

    EXPECT(strcmp(RTCM2_error_to_string(RTCM2_ERR_EOF), "RTCM2_ERR_EOF") == 0);
    EXPECT(strcmp(RTCM2_message_enum_to_string(RTCM2_DGNSS), "RTCM2_DGNSS") == 0);
    return failures == 0 ? 0 : 1;
}
