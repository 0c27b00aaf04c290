#pragma once

// What the program uses of the system's directories, declared for computers without their header.

#ifdef __cplusplus
extern "C" {
#endif

typedef enum { SYSDIR_DIRECTORY_APPLICATION_SUPPORT = 14 } sysdir_search_path_directory_t;
typedef enum { SYSDIR_DOMAIN_MASK_USER = 1 } sysdir_search_path_domain_mask_t;
typedef unsigned int sysdir_search_path_enumeration_state;

sysdir_search_path_enumeration_state sysdir_start_search_path_enumeration(
    sysdir_search_path_directory_t directory, sysdir_search_path_domain_mask_t domains);
sysdir_search_path_enumeration_state sysdir_get_next_search_path_enumeration(
    sysdir_search_path_enumeration_state state, char* path);

#ifdef __cplusplus
}
#endif
