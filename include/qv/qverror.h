/*
 * Result codes of the QUORVELIX SDK. Every exported function returns a signed
 * 32-bit result: QV_SUCCESS (1), one of the dialog results (100, 101, 102), or
 * a negative error code from this list.
 */
#pragma once

#define QV_SUCCESS 1 /* the call did what was asked */

/* Dialog results. */
#define QV_DLG_OK 100          /* the user pressed OK; the parameters were written back */
#define QV_DLG_CANCEL 101      /* the user cancelled; nothing was written */
#define QV_DLG_OK_NO_APPLY 102 /* palette editor: closed without handing a palette back */

/* Errors of the dialog entry points. */
#define QV_ERROR_BITMAP_NOT_ALLOCATED -2 /* a bitmap is needed and it is null or has no pixel memory */
#define QV_ERROR_INVALID_PARAMETER -13 /* a pointer is null, unmapped or not writable, or a value is out of its range \
                                        */
#define QV_ERROR_INVALID_BITS_PER_PIXEL -27 /* the bitmap's bits per pixel are not accepted by this call */
#define QV_ERROR_DLG_FAILED -150            /* the dialog could not be created or ended abnormally */
#define QV_ERROR_DLG_NOT_READY -152         /* Q_DlgInit has not been called (or Q_DlgFree was) */
#define QV_ERROR_INVALID_STRUCT_SIZE -789   /* a uStructSize field does not match the expected size */
#define QV_ERROR_UNSUPPORTED_BITMAP -1360   /* the bitmap holds signed samples, which this dialog cannot process */

/* Errors of the imaging kernel and the image operations. */
#define QV_ERROR_NO_MEMORY -1             /* memory for pixels, tables or copies could not be allocated */
#define QV_ERROR_USER_ABORT -100          /* the status callback asked the operation to stop */
#define QV_ERROR_IMAGE_TOO_LARGE -1401    /* width x height x depth exceeds what can be addressed */
#define QV_ERROR_INVALID_DIMENSIONS -1402 /* width or height is zero or negative */
#define QV_ERROR_UNSUPPORTED_FORMAT \
  -1403 /* the operation does not work on this pixel format (for example hue on signed gray) */
#define QV_ERROR_INVALID_FLAGS -1404      /* uFlags holds bits this call does not define */
#define QV_ERROR_INVALID_TABLE -1405      /* a lookup table is null or its length does not match the samples */
#define QV_ERROR_BAD_REGION -1406         /* the region is empty or lies outside the bitmap */
#define QV_ERROR_FILE_NOT_FOUND -1410     /* the image file does not exist or cannot be opened */
#define QV_ERROR_FILE_FORMAT -1411        /* the file is not an image of a supported format */
#define QV_ERROR_FILE_CORRUPT -1412       /* the file is damaged or cut short */
#define QV_ERROR_FILE_WRITE -1413         /* the image file could not be written */
#define QV_ERROR_INDEX_OUT_OF_RANGE -1420 /* a list index lies beyond the end of the list */
#define QV_ERROR_INVALID_HANDLE -1421     /* a list or palette handle is null or not one of ours */
#define QV_ERROR_BUFFER_TOO_SMALL -1430   /* the caller's buffer cannot hold the whole answer */
#define QV_ERROR_NOT_FOUND -1431          /* the requested item (string id, color name) does not exist */
#define QV_ERROR_NOT_INITIALIZED -1432    /* a release was asked for without the matching initialisation */
#define QV_ERROR_PLATFORM -1440           /* a Windows API call failed (GDI, Imaging Component) */
