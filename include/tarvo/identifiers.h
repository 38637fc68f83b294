/* The identifiers with which an object is asked for its interfaces (queryInterface).
 *
 * An interface that isn't listed here can't be queried: its references come from an operation that
 * hands them out. ITarvoBase and what extends it are of that kind.
 */
#ifndef TARVO_IDENTIFIERS_H
#define TARVO_IDENTIFIERS_H

#include "base.h"

#if defined(__cplusplus)
#define TARVO_IDENTIFIER inline constexpr TarvoUUID
#elif defined(__GNUC__)
#define TARVO_IDENTIFIER __attribute__((unused)) static const TarvoUUID
#else
#define TARVO_IDENTIFIER static const TarvoUUID
#endif

/* {53a74ee9-adfa-4916-be95-04e9283cc22e} */
TARVO_IDENTIFIER kIVaskInterfaceId = {{0x53, 0xa7, 0x4e, 0xe9, 0xad, 0xfa, 0x49, 0x16, 0xbe, 0x95,
                                       0x04, 0xe9, 0x28, 0x3c, 0xc2, 0x2e}};

/* {a9b39e4a-7d48-4081-a17f-6522824085b5} */
TARVO_IDENTIFIER kITarvoIdentificationId = {{0xa9, 0xb3, 0x9e, 0x4a, 0x7d, 0x48, 0x40, 0x81, 0xa1,
                                             0x7f, 0x65, 0x22, 0x82, 0x40, 0x85, 0xb5}};

/* {deafea79-d349-4d03-bb05-377c0d3e478b} */
TARVO_IDENTIFIER kITarvoCollectionId = {{0xde, 0xaf, 0xea, 0x79, 0xd3, 0x49, 0x4d, 0x03, 0xbb, 0x05,
                                         0x37, 0x7c, 0x0d, 0x3e, 0x47, 0x8b}};

/* {0e6e73ef-dc77-4acb-9074-bbfc8dcb05e2} */
TARVO_IDENTIFIER kIVaskPMCRegistrationDetailsId = {{0x0e, 0x6e, 0x73, 0xef, 0xdc, 0x77, 0x4a, 0xcb,
                                                    0x90, 0x74, 0xbb, 0xfc, 0x8d, 0xcb, 0x05,
                                                    0xe2}};

/* {8de5ea0e-e80a-4ace-befe-1f7f72aaf484} */
TARVO_IDENTIFIER kIVaskLibraryDetailsId = {{0x8d, 0xe5, 0xea, 0x0e, 0xe8, 0x0a, 0x4a, 0xce, 0xbe,
                                            0xfe, 0x1f, 0x7f, 0x72, 0xaa, 0xf4, 0x84}};

/* {827418a6-6515-40cf-81a7-dab8cf8fa176} */
TARVO_IDENTIFIER kIVaskPersistReaderId = {{0x82, 0x74, 0x18, 0xa6, 0x65, 0x15, 0x40, 0xcf, 0x81,
                                           0xa7, 0xda, 0xb8, 0xcf, 0x8f, 0xa1, 0x76}};

/* {12ebf184-f47a-4407-b52a-7fcc0a70451c} */
TARVO_IDENTIFIER kIVaskIdentificationId = {{0x12, 0xeb, 0xf1, 0x84, 0xf4, 0x7a, 0x44, 0x07, 0xb5,
                                            0x2a, 0x7f, 0xcc, 0x0a, 0x70, 0x45, 0x1c}};

/* {aba65dc8-93f9-4953-897d-a8fa8ea4eeae} */
TARVO_IDENTIFIER kIVaskPersistId = {{0xab, 0xa6, 0x5d, 0xc8, 0x93, 0xf9, 0x49, 0x53, 0x89, 0x7d,
                                     0xa8, 0xfa, 0x8e, 0xa4, 0xee, 0xae}};

#undef TARVO_IDENTIFIER

#ifdef __cplusplus
namespace TARVO {
using ::kITarvoCollectionId;
using ::kITarvoIdentificationId;
using ::kIVaskIdentificationId;
using ::kIVaskInterfaceId;
using ::kIVaskLibraryDetailsId;
using ::kIVaskPersistId;
using ::kIVaskPersistReaderId;
using ::kIVaskPMCRegistrationDetailsId;
} // namespace TARVO
#endif

#endif
