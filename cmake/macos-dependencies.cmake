# The libraries of the core for macOS: built from source for both kinds of processors and linked
# statically, so that the bundle needs nothing installed. Each is pinned by its contents: a commit
# where the source comes from a repository, a hash where it comes from a release file. Their own
# build descriptions are left aside: all are headers but one, which is one file.
include(FetchContent)

FetchContent_Declare(utf8proc_source  # v2.9.0
  GIT_REPOSITORY https://github.com/JuliaStrings/utf8proc.git
  GIT_TAG 34db3f7954e9298e89f42641ac78e0450f80a70d
  SOURCE_SUBDIR without-its-own-build)
FetchContent_Declare(expected_source  # v1.1.0
  GIT_REPOSITORY https://github.com/TartanLlama/expected.git
  GIT_TAG 292eff8bd8ee230a7df1d6a1c00c4ea0eb2f0362
  SOURCE_SUBDIR without-its-own-build)
FetchContent_Declare(json_source  # v3.11.3
  URL https://github.com/nlohmann/json/releases/download/v3.11.3/json.tar.xz
  URL_HASH SHA256=d6c65aca6b1ed68e7a182f4757257b107ae403032760ed6ef121c9d55e81757d
  DOWNLOAD_EXTRACT_TIMESTAMP ON
  SOURCE_SUBDIR without-its-own-build)
FetchContent_MakeAvailable(utf8proc_source expected_source json_source)

# Under the name that the package lists of other systems give it.
add_library(notewick_utf8proc STATIC ${utf8proc_source_SOURCE_DIR}/utf8proc.c)
target_compile_definitions(notewick_utf8proc PUBLIC UTF8PROC_STATIC)
target_include_directories(notewick_utf8proc SYSTEM PUBLIC ${utf8proc_source_SOURCE_DIR})
add_library(PkgConfig::utf8proc ALIAS notewick_utf8proc)

add_library(notewick_expected INTERFACE)
target_include_directories(notewick_expected SYSTEM INTERFACE ${expected_source_SOURCE_DIR}/include)
add_library(tl::expected ALIAS notewick_expected)

add_library(notewick_json INTERFACE)
target_include_directories(notewick_json SYSTEM INTERFACE ${json_source_SOURCE_DIR}/include)
add_library(nlohmann_json::nlohmann_json ALIAS notewick_json)

if(BUILD_TESTING)  # for the local service
  FetchContent_Declare(httplib_source  # v0.11.4; its interface changes from release to release
    URL https://github.com/yhirose/cpp-httplib/archive/refs/tags/v0.11.4.zip
    URL_HASH SHA256=9d884bee50ded17de3a51d673bb9c2d7d11f101c595b0891830ba9d02e0cc368
    DOWNLOAD_EXTRACT_TIMESTAMP ON
    SOURCE_SUBDIR without-its-own-build)
  FetchContent_Declare(cli11_source  # v2.1.2
    URL https://github.com/CLIUtils/CLI11/archive/refs/tags/v2.1.2.tar.gz
    URL_HASH SHA256=26291377e892ba0e5b4972cdfd4a2ab3bf53af8dac1f4ea8fe0d1376b625c8cb
    DOWNLOAD_EXTRACT_TIMESTAMP ON
    SOURCE_SUBDIR without-its-own-build)
  FetchContent_MakeAvailable(httplib_source cli11_source)
  add_library(notewick_httplib INTERFACE)
  target_include_directories(notewick_httplib SYSTEM INTERFACE ${httplib_source_SOURCE_DIR})
  target_compile_definitions(notewick_httplib INTERFACE CPPHTTPLIB_OPENSSL_SUPPORT)
  add_library(PkgConfig::cpp_httplib ALIAS notewick_httplib)
  add_library(notewick_cli11 INTERFACE)
  target_include_directories(notewick_cli11 SYSTEM INTERFACE ${cli11_source_SOURCE_DIR}/include)
  add_library(CLI11::CLI11 ALIAS notewick_cli11)
endif()
