# bash completion for touchutility, touchctl and touchsim, each of which says itself what may come
# next.
_touchutility() {
  local word glued='' line action=-f
  local -a words=() answer=()
  # bash cuts NAME=VALUE in three.
  for word in "${COMP_WORDS[@]:1:COMP_CWORD}"; do
    if [[ ${#words[@]} -gt 0 && ($word == "=" || -n $glued) ]]; then
      words[-1]+=$word
    else
      words+=("$word")
    fi
    glued=
    [[ $word != "=" ]] || glued=yes
  done
  words=("${words[@]//[\\\"\']/}")
  local current=${words[-1]##*=}
  local before=${words[-1]%"$current"}
  mapfile -t answer < <("${1/#\~/$HOME}" --complete "${words[@]}" 2>/dev/null)
  COMPREPLY=()
  case ${answer[0]-} in
    files | folders)
      compopt -o filenames 2>/dev/null
      [[ ${answer[0]} == files ]] || action=-d
      mapfile -t COMPREPLY < <(compgen "$action" -- "$current")
      ;;
    words)
      for line in "${answer[@]:1}"; do
        word=${line%%$'\t'*}
        printf -v word %q "${word#"$before"}"
        COMPREPLY+=("$word")
      done
      ;;
  esac
}
complete -F _touchutility touchutility touchctl touchsim
