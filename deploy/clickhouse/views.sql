-- What is asked most of the tables that `wirelines classify --schema clickhouse` makes. FINAL leaves out what a repeated
-- ingest brought twice, whether or not the engine has merged it yet. Bytes are those on the wire. Days are those of UTC.

-- Who talks to whom: the addresses of each pair in order, a first.
CREATE VIEW conversations AS
SELECT
    toDate(time) AS day,
    pair.1 AS layer,
    if(pair.2 <= pair.3, pair.2, pair.3) AS a,
    if(pair.2 <= pair.3, pair.3, pair.2) AS b,
    countIf(pair.2 <= pair.3) AS framesToB,
    sumIf(originalLength, pair.2 <= pair.3) AS bytesToB,
    countIf(pair.2 > pair.3) AS framesToA,
    sumIf(originalLength, pair.2 > pair.3) AS bytesToA
FROM frames FINAL
ARRAY JOIN [
    ('station', ifNull(toString(srcStation), ''), ifNull(toString(dstStation), '')),
    ('ip', if(network IN ('ip', 'ip-fragment', 'ip6'), ifNull(srcIp, ''), ''), ifNull(dstIp, '')),
    ('ip6', ifNull(srcIp6, ''), ifNull(dstIp6, '')),
    ('ipx',
        ifNull(concat(replaceRegexpOne(toString(ipxSrcNet), '^0{1,7}', ''), '.', toString(ipxSrcNode)), ''),
        ifNull(concat(replaceRegexpOne(toString(ipxDstNet), '^0{1,7}', ''), '.', toString(ipxDstNode)), ''))
] AS pair
WHERE pair.2 != ''
GROUP BY day, layer, a, b;

-- What each address sent and received.
CREATE VIEW talkers AS
SELECT
    day,
    layer,
    side.1 AS address,
    sum(side.2) AS framesSent,
    sum(side.3) AS bytesSent,
    sum(side.4) AS framesReceived,
    sum(side.5) AS bytesReceived
FROM conversations
ARRAY JOIN [
    (a, framesToB, bytesToB, framesToA, bytesToA),
    (b, framesToA, bytesToA, framesToB, bytesToB)
] AS side
GROUP BY day, layer, address;

-- Protocols minute by minute. What follows IPv4 and IPv6 has a number only where it is none of these.
CREATE VIEW protocols AS
SELECT
    toStartOfMinute(time) AS minute,
    ifNull(network, 'none') AS network,
    if(networkCode IN (4097, 4098, 4106),
       transform(ifNull(ipProtocol, 0), [1, 2, 6, 17, 58], ['icmp', 'igmp', 'tcp', 'udp', 'icmp6'], toString(ifNull(ipProtocol, 0))),
       '') AS carries,
    count() AS frames,
    sum(originalLength) AS bytes
FROM frames FINAL
GROUP BY minute, network, carries;

-- Wrong checksums by the station that sent them; none where the capture has no stations.
CREATE VIEW checksum_errors AS
SELECT
    toDate(time) AS day,
    ifNull(toString(srcStation), '') AS station,
    countIf(bitAnd(wrongChecksums, 1) != 0) AS ip,
    countIf(bitAnd(wrongChecksums, 2) != 0) AS icmp,
    countIf(bitAnd(wrongChecksums, 4) != 0) AS tcp,
    countIf(bitAnd(wrongChecksums, 8) != 0) AS udp
FROM frames FINAL
WHERE wrongChecksums != 0
GROUP BY day, station;

-- How each station frames what it sends.
CREATE VIEW framings AS
SELECT
    toDate(time) AS day,
    assumeNotNull(toString(srcStation)) AS station,
    transform(ifNull(frameKind, 0), [1, 2, 3, 4, 5], ['802.3 raw', 'LLC', 'SNAP', 'Ethernet II', 'LLC'], 'Too short') AS framing,
    count() AS frames,
    sum(originalLength) AS bytes
FROM frames FINAL
WHERE srcStation IS NOT NULL
GROUP BY day, station, framing;
