/* The message-passing interface of ZQCore: a small C layer over the MPI library.
 * It is the only code of the project that includes mpi.h; everything else talks to
 * MPI through these functions. Every function returns 0 on success and an MPI error
 * code otherwise. */
#ifndef ZQCORE_WMPI_H
#define ZQCORE_WMPI_H

#include <zqcore/ZQWmpiExport.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Handles. As a communicator: -1 none, -2 the world, -3 this process alone (both
 * predefined, never released). As a request: -1 none; a finished request is set to -1. */
#define WMPI_COMM_NULL 0xFFFFFFFFFFFFFFFFull
#define WMPI_COMM_WORLD 0xFFFFFFFFFFFFFFFEull
#define WMPI_COMM_SELF 0xFFFFFFFFFFFFFFFDull
#define WMPI_REQUEST_NULL 0xFFFFFFFFFFFFFFFFull

/* A peer of -1 is any source, a tag of -1 any tag. */
#define WMPI_ANY_SOURCE (-1)
#define WMPI_ANY_TAG (-1)

/* The count that WMPI_Get_count gives when the message is not a whole number of elements. */
#define WMPI_UNDEFINED (-32766)

/* Room that WMPI_Error_string may fill, terminator included. */
#define WMPI_MAX_ERROR_STRING 256

/* Datatype codes. */
#define WMPI_CHAR 1
#define WMPI_SHORT 2
#define WMPI_INT 3
#define WMPI_FLOAT 5
#define WMPI_DOUBLE 6
#define WMPI_UNSIGNED_CHAR 18
#define WMPI_BYTE 19
#define WMPI_LONG_LONG 20
#define WMPI_WCHAR 24

/* Reduction operation codes. */
#define WMPI_MAX 1
#define WMPI_MIN 2
#define WMPI_SUM 3
#define WMPI_LAND 5

/* What a receive or probe learns of a message: the byte count split over the first two
 * words (high bits shifted left by one, the cancelled flag in bit 0), then source, tag
 * and error. */
struct WMPI_Status {
  int count_lo;
  int count_hi_and_cancelled;
  int MPI_SOURCE;
  int MPI_TAG;
  int MPI_ERROR;
};
typedef struct WMPI_Status WMPI_Status;

ZQ_WMPI_EXPORT int WMPI_Initialized(int *flag);
ZQ_WMPI_EXPORT int WMPI_Error_string(int code, char *text, int *length);
ZQ_WMPI_EXPORT int WMPI_Abort(unsigned long long comm, int code);

ZQ_WMPI_EXPORT int WMPI_Comm_dup(unsigned long long comm, unsigned long long *newComm);
ZQ_WMPI_EXPORT int WMPI_Comm_free(unsigned long long *comm);
ZQ_WMPI_EXPORT int WMPI_Comm_size(unsigned long long comm, int *size);
ZQ_WMPI_EXPORT int WMPI_Comm_rank(unsigned long long comm, int *rank);

ZQ_WMPI_EXPORT int WMPI_Barrier(unsigned long long comm);
ZQ_WMPI_EXPORT int WMPI_Bcast(void *buffer, int count, int datatype, int root, unsigned long long comm);
ZQ_WMPI_EXPORT int WMPI_Allgather(void *send, int sendCount, int sendType, void *recv, int recvCount, int recvType,
                                  unsigned long long comm);
ZQ_WMPI_EXPORT int WMPI_Alltoall(void *send, int sendCount, int sendType, void *recv, int recvCount, int recvType,
                                 unsigned long long comm);
ZQ_WMPI_EXPORT int WMPI_Allreduce(void *send, void *recv, int count, int datatype, int op, unsigned long long comm);

ZQ_WMPI_EXPORT int WMPI_Send(void *buffer, int count, int datatype, int dest, int tag, unsigned long long comm);
ZQ_WMPI_EXPORT int WMPI_Recv(void *buffer, int count, int datatype, int source, int tag, unsigned long long comm,
                             WMPI_Status *status);
ZQ_WMPI_EXPORT int WMPI_Sendrecv(void *send, int sendCount, int sendType, int dest, int sendTag, void *recv,
                                 int recvCount, int recvType, int source, int recvTag, unsigned long long comm,
                                 WMPI_Status *status);
ZQ_WMPI_EXPORT int WMPI_Isend(void *buffer, int count, int datatype, int dest, int tag, unsigned long long comm,
                              unsigned long long *request);
ZQ_WMPI_EXPORT int WMPI_Irecv(void *buffer, int count, int datatype, int source, int tag, unsigned long long comm,
                              unsigned long long *request);
ZQ_WMPI_EXPORT int WMPI_Wait(unsigned long long *request, WMPI_Status *status);
ZQ_WMPI_EXPORT int WMPI_Waitall(int count, unsigned long long *requests, WMPI_Status *statuses);
ZQ_WMPI_EXPORT int WMPI_Waitany(int count, unsigned long long *requests, int *index, WMPI_Status *status);
ZQ_WMPI_EXPORT int WMPI_Probe(int source, int tag, unsigned long long comm, WMPI_Status *status);
ZQ_WMPI_EXPORT int WMPI_Iprobe(int source, int tag, unsigned long long comm, int *flag, WMPI_Status *status);
ZQ_WMPI_EXPORT int WMPI_Get_count(WMPI_Status const *status, int datatype, int *count);
ZQ_WMPI_EXPORT int WMPI_Pack(void *input, int count, int datatype, void *output, int outputSize, int *position,
                             unsigned long long comm);
ZQ_WMPI_EXPORT int WMPI_Unpack(void *input, int inputSize, int *position, void *output, int count, int datatype,
                               unsigned long long comm);
ZQ_WMPI_EXPORT int WMPI_Request_free(unsigned long long *request);

#ifdef __cplusplus
}
#endif

#endif
