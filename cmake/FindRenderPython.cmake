# Finds a Python 3 that has the modules of the generator (Jinja2 and PyYAML), also where another
# python3 without them comes first on PATH. Sets RENDER_PYTHON, unless that was set before; OFF stands
# for none.
if(NOT DEFINED RENDER_PYTHON)
  set(candidates "${Python3_EXECUTABLE}")
  string(REPLACE ":" ";" directories "$ENV{PATH}")
  foreach(directory IN LISTS directories ITEMS /usr/bin /usr/local/bin)
    list(APPEND candidates "${directory}/python3")
  endforeach()
  foreach(candidate IN LISTS candidates)
    if(candidate AND EXISTS "${candidate}")
      execute_process(COMMAND "${candidate}" -c "import jinja2, yaml"
                      RESULT_VARIABLE failed OUTPUT_QUIET ERROR_QUIET)
      if(NOT failed)
        set(RENDER_PYTHON "${candidate}" CACHE FILEPATH "Python 3 with Jinja2 and PyYAML")
        break()
      endif()
    endif()
  endforeach()
endif()
if(RENDER_PYTHON)
  message(STATUS "Python for the generator: ${RENDER_PYTHON}")
endif()
