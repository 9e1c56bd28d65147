#!lua name=popup_reports

-- Adds a report to the stream unless that is full. Nothing is ever cut off from the stream's other
-- end: what stands there was promised to be kept.
redis.register_function('add_report', function(keys, arguments)
  if redis.call('XLEN', keys[1]) >= tonumber(arguments[1]) then
    return redis.error_reply('FULL no more reports are taken')
  end
  return redis.call('XADD', keys[1], '*', 'path', arguments[2], 'parameters', arguments[3],
                    'body', arguments[4])
end)
