# Completion of snipwell for bash: its options up to the compiler, behind it the compiler's own words.

# The place of the first word that is neither an option of snipwell nor the value of one.
_snipwell_command() {
  local at
  for ((at = 1; at < COMP_CWORD; ++at)); do
    case ${COMP_WORDS[at]} in
      -p | -o | -j | --jobs | --test | --wrong-code | --match | --accepted-by | --repeat | \
        --timeout | --limit | --launch | --work | --stages | --html | --json | --trace)
        [[ ${COMP_WORDS[at + 1]} == = ]] && ((++at))
        ((++at))
        ;;
      -*) ;;
      *) break ;;
    esac
  done
  echo "$at"
}

_snipwell() {
  local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  local command
  command=$(_snipwell_command)
  COMPREPLY=()
  [[ $word == = ]] && word=
  [[ $previous == = ]] && previous=${COMP_WORDS[COMP_CWORD - 2]}
  if ((command < COMP_CWORD)); then
    declare -F _command_offset >/dev/null && _command_offset "$command"
    return
  fi
  case $previous in
    -p | --work) mapfile -t COMPREPLY < <(compgen -d -- "$word") ;;
    -o | --html | --json | --trace) mapfile -t COMPREPLY < <(compgen -f -- "$word") ;;
    --test | --wrong-code | --accepted-by | --launch)
      mapfile -t COMPREPLY < <(compgen -c -f -- "$word")
      ;;
    --stages)
      mapfile -t COMPREPLY < <(
        compgen -W "preprocess plain snip refine options layout" -- "$word"
      )
      ;;
    -j | --jobs | --match | --repeat | --timeout | --limit) ;;
    *)
      if [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "-p --test= --wrong-code= --match= --list \
          --accepted-by= --allow-errors --repeat= -j --jobs= --timeout= --limit= --launch= --work= \
          --stages= -o --force --resume --html= --json= --trace= -q --quiet -v --verbose -h --help \
          --version" -- "$word")
        [[ ${COMPREPLY[0]-} == *= ]] && compopt -o nospace
      else
        mapfile -t COMPREPLY < <(compgen -c -f -- "$word")
      fi
      ;;
  esac
}

complete -o filenames -o bashdefault -F _snipwell snipwell
