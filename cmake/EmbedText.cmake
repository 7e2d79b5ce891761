# Texts that stand in files of their own and are compiled into what shows them.
#
# rtcm2_embed_text(<target> <file> <function>) gives the target a function
# `std::string_view <function>()`, which its sources declare, with what is in the file.

if(NOT CMAKE_SCRIPT_MODE_FILE)
  set(embed_text_script ${CMAKE_CURRENT_LIST_FILE})
  function(rtcm2_embed_text target file function)
    set(text ${CMAKE_CURRENT_SOURCE_DIR}/${file})
    set(source ${CMAKE_CURRENT_BINARY_DIR}/${function}.cpp)
    add_custom_command(OUTPUT ${source}
      COMMAND ${CMAKE_COMMAND} -DTEXT=${text} -DFUNCTION=${function} -DSOURCE=${source}
        -P ${embed_text_script}
      DEPENDS ${text} ${embed_text_script}
      COMMENT "Embedding ${file}"
      VERBATIM)
    set_source_files_properties(${source} PROPERTIES SKIP_AUTOMOC ON)
    target_sources(${target} PRIVATE ${source})
  endfunction()
  return()
endif()

file(READ ${TEXT} text)
file(WRITE ${SOURCE} "#include <string_view>

std::string_view ${FUNCTION}();

std::string_view ${FUNCTION}()
{
    return R\"embedded(${text})embedded\";
}
")
