#pragma once

#ifdef __cplusplus
#define UIKIT_EXTERN extern "C"
#else
#define UIKIT_EXTERN extern
#endif
