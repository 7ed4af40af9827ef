#compdef touchutility touchctl touchsim
# zsh completion: the programs say themselves what may come next.
local -a answer described
local line
answer=("${(@f)$("${(Q)words[1]}" --complete "${(@Q)words[2,CURRENT-1]}" "${(Q)PREFIX}" 2>/dev/null)}")
case $answer[1] in
  files|folders)
    [[ $PREFIX != *=* ]] || compset -P '*='
    if [[ $answer[1] == files ]]; then _files; else _files -/; fi
    ;;
  words)
    for line in "${(@)answer[2,-1]}"; do
      described+=("${${line%%$'\t'*}//:/\\:}:${line#*$'\t'}")
    done
    _describe -V 'what comes next' described
    ;;
esac
