# The libraries that the benchmarks compare with. Each is optional: a benchmark
# asks for it with `#if ZT_PEER_…` and leaves its column out where it is absent.

add_library(zt_peers INTERFACE)

function(zt_peer name found)
  if(found)
    target_link_libraries(zt_peers INTERFACE ${ARGN})
  endif()
  target_compile_definitions(zt_peers INTERFACE
    ZT_PEER_${name}=$<BOOL:${found}>)
endfunction()

find_package(absl QUIET)
zt_peer(ABSEIL "${absl_FOUND}" absl::strings absl::flat_hash_map)

find_library(ZT_S2_LIBRARY s2)
find_path(ZT_S2_INCLUDE s2/r1interval.h)
set(zt_s2_found OFF)
if(ZT_S2_LIBRARY AND ZT_S2_INCLUDE AND absl_FOUND)
  set(zt_s2_found ON)
endif()
zt_peer(S2 "${zt_s2_found}" "${ZT_S2_LIBRARY}")

find_path(ZT_BOOST_ICL_INCLUDE boost/icl/interval_set.hpp)
zt_peer(BOOST_ICL "${ZT_BOOST_ICL_INCLUDE}")

find_package(tinyxml2 QUIET)
zt_peer(TINYXML2 "${tinyxml2_FOUND}" tinyxml2::tinyxml2)

find_package(LibXml2 QUIET)
zt_peer(LIBXML2 "${LibXml2_FOUND}" LibXml2::LibXml2)

zt_peer(PUGIXML ON pugixml::pugixml)
